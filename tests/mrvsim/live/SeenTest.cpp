#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "mrvsim/live/Seen.h"

namespace {

using namespace simulator::live;

std::string bytesOf(const HostState& state) {
  std::string bytes(sizeof state, '\0');
  std::memcpy(bytes.data(), &state, sizeof state);
  return bytes;
}

class SeenOfAPlugIn : public testing::Test {
 protected:
  void log(const std::string& line) { seen_.receive(message::kLogged, line, 0); }

  void wheel(const std::string& wheels, int flags = 0) {
    log(R"({"t":40,"what":"wheel","units":0,"wheels":)" + wheels + R"(,"flags":)" +
        std::to_string(flags) + R"(,"location":[1.0,2.0],"type":22,"tap":1})");
  }

  Seen seen_;
};

TEST_F(SeenOfAPlugIn, LightsUpForEachKindOfTick) {
  wheel("[1]");
  wheel("[-1]");
  wheel("[8]");
  wheel("[-8]");
  wheel("[0,8]");
  wheel("[-8]", 0x100000);
  for (const Flash flash : {kZoomIn, kZoomOut, kPanDown, kPanUp, kPanRight, kPanLeft}) {
    EXPECT_EQ(seen_.counts[flash], 1U) << flash;
    EXPECT_EQ(seen_.since(flash, 100), 60);
  }
  EXPECT_GT(seen_.since(kBrushLarger, 100), 100000);
}

TEST_F(SeenOfAPlugIn, TellsALargerBrushFromASmallerOne) {
  HostState state;
  state.brush = 13;
  seen_.receive(message::kHostState, bytesOf(state), 0);
  log(R"({"t":1,"what":"view","zoom":1.0,"origin":[0.0,0.0],"brush":20.0})");
  log(R"({"t":2,"what":"view","zoom":1.0,"origin":[0.0,0.0],"brush":13.0})");
  log(R"({"t":3,"what":"view","zoom":1.1,"origin":[0.0,0.0],"brush":13.0})");
  EXPECT_EQ(seen_.counts[kBrushLarger], 1U);
  EXPECT_EQ(seen_.counts[kBrushSmaller], 1U);
}

TEST_F(SeenOfAPlugIn, KnowsWhichKeysAreHeld) {
  log(R"({"t":7,"what":"key","key":58,"down":true,"type":10,"tap":1})");
  EXPECT_THAT(seen_.keysHeld(), testing::ElementsAre(58));
  log(R"({"t":9,"what":"key","key":58,"down":false,"type":11,"tap":1})");
  EXPECT_THAT(seen_.keysHeld(), testing::IsEmpty());
  EXPECT_EQ(seen_.sinceKey(58, 10), 3);
}

TEST_F(SeenOfAPlugIn, SeesTheRedrawWhenTheWindowWaitsNoLonger) {
  HostState state;
  state.isPending = true;
  seen_.receive(message::kHostState, bytesOf(state), 10);
  EXPECT_EQ(seen_.counts[kRedrawn], 0U);
  state.isPending = false;
  seen_.receive(message::kHostState, bytesOf(state), 30);
  EXPECT_EQ(seen_.since(kRedrawn, 35), 5);
}

TEST_F(SeenOfAPlugIn, CountsMisusesAndClicks) {
  log(R"({"t":0,"what":"misuse","text":"leaked"})");
  log(R"({"t":0,"what":"click","kind":"down","passed":false})");
  log(R"({"t":0,"what":"click","kind":"down","passed":true})");
  EXPECT_EQ(seen_.misuses, 1U);
  EXPECT_EQ(seen_.counts[kClickHeldBack], 1U);
  EXPECT_EQ(seen_.counts[kClickPassed], 1U);
}

TEST_F(SeenOfAPlugIn, KeepsTheLastLinesButNoSamples) {
  log(R"({"t":0,"what":"posted","class":"mrvE","kind":2,"priority":2,"parameters":[]})");
  EXPECT_TRUE(seen_.lines.empty());
  for (int i = 0; i < 300; ++i) log(R"({"t":0,"what":"misuse","text":"leaked"})");
  EXPECT_EQ(seen_.lines.size(), 200U);
  EXPECT_THAT(seen_.lines.front(), testing::HasSubstr("leaked"));
}

TEST_F(SeenOfAPlugIn, RemembersHowAPlugInBroke) {
  seen_.receive(message::kWasLoaded, "", 0);
  EXPECT_TRUE(seen_.isLoaded);
  seen_.receive(message::kEnded, "the plug-in crashed", 0);
  seen_.startAnew();
  seen_.receive(message::kEnded, "", 0);
  EXPECT_FALSE(seen_.isLoaded);
  EXPECT_EQ(seen_.lastBreakdown, "the plug-in crashed");
  EXPECT_EQ(seen_.breakdowns, 1);
}

TEST_F(SeenOfAPlugIn, TakesTheTimesFromInputToEvent) {
  seen_.receive(message::kDelay, "2000000", 0);
  EXPECT_EQ(seen_.latency.percentile(0.5), 2.0);
}

}  // namespace
