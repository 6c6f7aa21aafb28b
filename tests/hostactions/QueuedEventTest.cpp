// The pending request and what it plays.
#include <HostTerms.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

#include "hostactions/PsUIBoss.h"
#include "hostactions/QueuedEvent.h"
#include "suites/Suites.h"
#include "tests/hostactions/RecordingHost.h"

using namespace simulator;
using namespace testing_support;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The log's line of setting a brush property.
Json setLine(const char* property, const char* unit, const Json& value, int result = 0) {
  Json brush = {{{"key", property}, {"type", "UntF"}, {"unit", unit}, {"value", value}}};
  Json descriptor = jsonOf(R"([
      {"key": "null", "type": "obj ", "value": [
        {"form": "Enmr", "class": "Brsh", "enumType": "Ordn", "value": "Trgt"}]},
      {"key": "T   ", "type": "Objc", "class": "Brsh", "value": []}])");
  descriptor[1]["value"] = std::move(brush);
  return {{"t", 0},      {"what", "play"},  {"event", "setd"}, {"descriptor", descriptor},
          {"dialog", 2}, {"result", result}};
}

/// The log's line of selecting a tool.
Json selectLine(const char* tool, int result = 0) {
  Json descriptor = jsonOf(R"([{"key": "null", "type": "obj ", "value": [{"form": "Clss"}]}])");
  descriptor[0]["value"][0]["class"] = tool;
  return {{"t", 0},      {"what", "play"},  {"event", "slct"}, {"descriptor", descriptor},
          {"dialog", 2}, {"result", result}};
}

class QueuedEvent : public testing::Test {
 protected:
  std::vector<Json> plays() const { return machine_.lines("play"); }

  int eraser() { return static_cast<int>(theHost().typeIds().idOf("eraserTool")); }

  Machine machine_;
};

}  // namespace

TEST_F(QueuedEvent, ClampsADiameterTo1To2500) {
  const std::pair<double, double> diameters[] = {
      {0.3, 1.0},       {4000.0, 2500.0},    {2500.0, 2500.0},    {1.0, 1.0},
      {0.0, 1.0},       {-0.0, 1.0},         {-5.0, 1.0},         {13.7, 13.7},
      {2500.1, 2500.0}, {0.9999999999, 1.0}, {kInfinity, 2500.0}, {-kInfinity, 1.0}};
  for (const auto& [diameter, queued] : diameters) {
    gPlayFunction = 0;
    EXPECT_EQ(PlayeventDynamicSetMasterDiameter(diameter, 0), 0);
    EXPECT_EQ(gDoubleValue, queued) << diameter;
    EXPECT_EQ(gPlayFunction, 1);
  }
}

TEST_F(QueuedEvent, StoresANaNDiameterUnchanged) {
  EXPECT_EQ(PlayeventDynamicSetMasterDiameter(kNaN, 0), 0);
  EXPECT_TRUE(std::isnan(gDoubleValue));
  EXPECT_EQ(gPlayFunction, 1);
}

TEST_F(QueuedEvent, SignExtendsTheToolTo64Bits) {
  PlayeventDynamicSetMasterDiameter(5.0, -2);
  EXPECT_EQ(gActiveTool, -2LL);
  PlayeventDynamicSetMasterDiameter(5.0, std::numeric_limits<int>::max());
  EXPECT_EQ(gActiveTool, 2147483647LL);
}

TEST_F(QueuedEvent, PlaysNothingAndReturns0IfNothingIsQueued) {
  EXPECT_FALSE(IsPlayEventBusy());
  EXPECT_EQ(PlayQueuedEvent(), 0);
  EXPECT_TRUE(plays().empty());
}

TEST_F(QueuedEvent, SetsTheDiameterInPixelsAndSelectsTheToolForRequest1) {
  theHost().setTool("pencilTool");
  PlayeventDynamicSetMasterDiameter(50.5, eraser());
  EXPECT_TRUE(IsPlayEventBusy());
  EXPECT_EQ(PlayQueuedEvent(), 0);
  ASSERT_EQ(plays().size(), 2U);
  EXPECT_EQ(plays()[0], setLine("$masterDiameter", "#Pxl", 50.5));
  EXPECT_EQ(plays()[1], selectLine("$eraserTool"));
  EXPECT_EQ(theHost().brush(), 50.5);
  EXPECT_EQ(theHost().tool(), "eraserTool");
  EXPECT_FALSE(IsPlayEventBusy());
}

TEST_F(QueuedEvent, SetsTheHardnessInPercentForRequest2) {
  gDoubleValue = 37.5;
  gPlayFunction = 2;
  EXPECT_EQ(PlayQueuedEvent(), 0);
  ASSERT_EQ(plays().size(), 1U);
  EXPECT_EQ(plays()[0], setLine("$hardness", "#Prc", 37.5));
  EXPECT_EQ(theHost().model().brush->hardness, 37.5);
  EXPECT_FALSE(IsPlayEventBusy());
}

TEST_F(QueuedEvent, SetsTheSpacingInPercentForRequest3) {
  gDoubleValue = 150.0;
  gActiveTool = eraser();
  gPlayFunction = 3;
  EXPECT_EQ(PlayQueuedEvent(), 0);
  ASSERT_EQ(plays().size(), 1U) << "only a diameter selects the tool";
  EXPECT_EQ(plays()[0], setLine("$spacing", "#Prc", 150.0));
  EXPECT_EQ(theHost().model().brush->spacing, 150.0);
}

TEST_F(QueuedEvent, PlaysNothingForRequest5) {
  PlayeventWinSetMasterDiameter();
  EXPECT_EQ(gPlayFunction, 5);
  EXPECT_TRUE(IsPlayEventBusy());
  EXPECT_EQ(PlayQueuedEvent(), 0);
  EXPECT_TRUE(plays().empty());
  EXPECT_FALSE(IsPlayEventBusy());
}

TEST_F(QueuedEvent, ClearsAnUnknownRequestAndPlaysNothing) {
  for (const int request : {4, 6, -1, 1000, std::numeric_limits<int>::min()}) {
    gPlayFunction = request;
    EXPECT_TRUE(IsPlayEventBusy());
    EXPECT_EQ(PlayQueuedEvent(), 0) << request;
    EXPECT_FALSE(IsPlayEventBusy());
  }
  EXPECT_TRUE(plays().empty());
}

TEST_F(QueuedEvent, KeepsARequestWhileTheMouseIsDown) {
  PlayeventDynamicSetMasterDiameter(20.0, eraser());
  PsUIBoss::Instance().SetMouseDown(true);
  EXPECT_EQ(PlayQueuedEvent(), 0);
  EXPECT_EQ(PlayQueuedEvent(), 0);
  EXPECT_TRUE(IsPlayEventBusy());
  EXPECT_TRUE(plays().empty());
  PsUIBoss::Instance().SetMouseDown(false);
  EXPECT_EQ(PlayQueuedEvent(), 0);
  EXPECT_EQ(plays().size(), 2U);
  EXPECT_FALSE(IsPlayEventBusy());
}

TEST_F(QueuedEvent, ReplacesAPendingRequestByALaterOne) {
  PlayeventDynamicSetMasterDiameter(20.0, eraser());
  PlayeventDynamicSetMasterDiameter(30.0, 0);
  EXPECT_EQ(PlayQueuedEvent(), 0);
  ASSERT_EQ(plays().size(), 1U);
  EXPECT_EQ(plays()[0], setLine("$masterDiameter", "#Pxl", 30.0));
  PlayeventDynamicSetMasterDiameter(40.0, 0);
  PlayeventWinSetMasterDiameter();
  EXPECT_EQ(PlayQueuedEvent(), 0);
  EXPECT_EQ(plays().size(), 1U);
}

TEST_F(QueuedEvent, PlaysARequestOnce) {
  PlayeventDynamicSetMasterDiameter(20.0, 0);
  PlayQueuedEvent();
  PlayQueuedEvent();
  EXPECT_EQ(plays().size(), 1U);
}

TEST_F(QueuedEvent, KeepsValueAndToolAfterPlaying) {
  PlayeventDynamicSetMasterDiameter(20.0, eraser());
  PlayQueuedEvent();
  EXPECT_EQ(gDoubleValue, 20.0);
  EXPECT_EQ(gActiveTool, eraser());
}

TEST_F(QueuedEvent, SkipsTheSelectionAndReturnsOnlyTheSetsErrorWithoutATool) {
  PlayeventDynamicSetMasterDiameter(20.0, 0);
  theFaults().add({"ActionControl.Play", -1728, 0, 1});
  EXPECT_EQ(PlayQueuedEvent(), -1728);
  ASSERT_EQ(plays().size(), 1U);
  EXPECT_EQ(plays()[0], setLine("$masterDiameter", "#Pxl", 20.0, -1728));
  EXPECT_FALSE(IsPlayEventBusy()) << "a request is played at most once";
}

TEST_F(QueuedEvent, MergesTheErrorsOfSetAndSelectByOr) {
  PlayeventDynamicSetMasterDiameter(20.0, eraser());
  theFaults().add({"ActionControl.Play", 0x1200, 0, 1});
  theFaults().add({"ActionControl.Play", 0x0034, 0, 1});
  EXPECT_EQ(PlayQueuedEvent(), 0x1234);
  ASSERT_EQ(plays().size(), 2U) << "the selection runs even when the set failed";
  PlayeventDynamicSetMasterDiameter(20.0, eraser());
  theFaults().add({"ActionControl.Play", -1728, 0, 1});
  theFaults().add({"ActionControl.Play", -1715, 0, 1});
  EXPECT_EQ(PlayQueuedEvent(), -1728 | -1715);
}

TEST_F(QueuedEvent, ReturnsTheErrorOfAFailedSelection) {
  PlayeventDynamicSetMasterDiameter(20.0, eraser());
  theFaults().add({"ActionControl.Play", -43, 1, 1});
  EXPECT_EQ(PlayQueuedEvent(), -43);
  EXPECT_EQ(theHost().brush(), 20.0);
  EXPECT_FALSE(IsPlayEventBusy());
}

TEST_F(QueuedEvent, PlaysANaNDiameterUnchanged) {
  PlayeventDynamicSetMasterDiameter(kNaN, 0);
  EXPECT_EQ(PlayQueuedEvent(), -50);
  ASSERT_EQ(plays().size(), 1U);
  EXPECT_EQ(plays()[0]["descriptor"][1]["value"][0]["value"].dump(), "null");
  EXPECT_EQ(theHost().brush(), 13.0);
}

TEST_F(QueuedEvent, ThrowsAndKeepsTheRequestIfASuiteCannotBeAcquired) {
  PsUIBoss::Instance();
  PIUSuitesRelease();
  PlayeventDynamicSetMasterDiameter(20.0, eraser());
  theFaults().add({"Basic.AcquireSuite", 0x12345678, 0, 1});
  const Outcome outcome = attempt([] { return PlayQueuedEvent(); });
  EXPECT_TRUE(outcome.threw);
  EXPECT_EQ(outcome.thrown, 0x12345678U);
  EXPECT_TRUE(IsPlayEventBusy());
  EXPECT_EQ(PlayQueuedEvent(), 0);
  EXPECT_EQ(plays().size(), 2U) << "tried again, and played";
}

TEST_F(QueuedEvent, SetsAnyPropertyWithAnyUnit) {
  char key[] = "angle";
  // The high 32 bits of the unit are ignored.
  const unsigned long unit = 0x1234567800000000UL | fourCharCode("#Ang");
  EXPECT_EQ(PlayeventDynamicSetProperty(key, unit, -45.25), 0);
  ASSERT_EQ(plays().size(), 1U);
  EXPECT_EQ(plays()[0], setLine("$angle", "#Ang", -45.25));
}

TEST_F(QueuedEvent, PlaysNothingForAPropertyWithoutAName) {
  char key[] = "";
  EXPECT_EQ(PlayeventDynamicSetProperty(key, kUnitPixels, 1.0), -50);
  EXPECT_TRUE(plays().empty());
}

TEST_F(QueuedEvent, SelectsNothingWithoutATool) {
  gActiveTool = 0;
  EXPECT_EQ(PlayeventSelectBrush(), 0);
  EXPECT_TRUE(machine_.lines().empty()) << "no suite was acquired either";
}

TEST_F(QueuedEvent, SelectsTheLow32BitsOfTheTool) {
  gActiveTool = (7LL << 32) + eraser();
  EXPECT_EQ(PlayeventSelectBrush(), 0);
  ASSERT_EQ(plays().size(), 1U);
  EXPECT_EQ(plays()[0], selectLine("$eraserTool"));
}
