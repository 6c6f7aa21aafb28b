// Twists to keystrokes: the keys, when they are typed, and what a gesture asks the host for.
#include <Carbon/Carbon.h>
#include <HostTerms.h>
#include <gtest/gtest.h>
#include <objc/runtime.h>

#include <climits>
#include <ostream>

#include "hostactions/BrushSize.h"
#include "hostactions/PsUIBoss.h"
#include "hostwindow/ObjcMessage.h"
#include "simulator/macos/ObjcRuntime.h"
#include "simulator/macos/TextInput.h"
#include "tests/hostactions/Tools.h"
#include "tests/support/Machine.h"

using namespace simulator;
using namespace testing_support;

namespace {

constexpr int kUSSmaller = 33;
constexpr int kUSLarger = 30;

/// The log's "posted" line of a brush key.
Json keyLine(int kind, int key, int character = 0, std::uint32_t modifiers = 0) {
  return {{"t", 0},
          {"what", "posted"},
          {"class", "keyb"},
          {"kind", kind},
          {"priority", 2},
          {"parameters",
           {{"kcod", "magn", key}, {"kchr", "TEXT", character}, {"kmod", "magn", modifiers}}}};
}

class BrushSize : public testing::Test {
 protected:
  BrushSize() { InitBrushSize(nullptr); }
  ~BrushSize() override {
    while (theEventManager().dispatchNext()) {
    }
  }

  /// The keys pressed since the last call.
  std::vector<int> typed() {
    std::vector<int> keys;
    for (const Json& line : machine_.drain()) {
      if (line["what"] == "posted" && line["kind"] == 1) {
        keys.push_back(line["parameters"][0][2].get<int>());
      }
    }
    return keys;
  }

  /// The number of queries for the tool. A lookup makes two, for the tool and for its brush.
  int toolQuestions() {
    int questions = 0;
    for (const Json& line : machine_.lines("get")) {
      if (line["reference"][0]["key"] == "Tool") ++questions;
    }
    return questions;
  }

  Machine machine_;
};

struct LayoutKeys {
  const char* layout;
  int smaller, larger;
};

void PrintTo(const LayoutKeys& keys, std::ostream* out) { *out << keys.layout; }

class BrushSizeLayout : public BrushSize, public testing::WithParamInterface<LayoutKeys> {};

/// The messages sent by the checks at the start of `AdjustBrushSize`.
std::vector<std::string> messages;

BOOL contentNeedsDisplay(id, SEL) {
  messages.emplace_back("needsDisplay");
  return theWindowServer().window().contentNeedsDisplay;
}

id mainWindow(id, SEL) {
  messages.emplace_back("mainWindow");
  return theWindowServer().window().isMain ? theWindowServer().windowObject() : nullptr;
}

template <class Result, class... Arguments>
void replaceMethod(id object, const char* name, Result (*function)(Arguments...)) {
  for (auto& method : object->isa->methods) {
    if (method.selector == selectorOf(name)) {
      method.implementation = reinterpret_cast<void (*)()>(function);
    }
  }
}

/// Starts recording `messages`.
void noteMessages() {
  const id application = sendMessage<id>(reinterpret_cast<id>(objc_getClass("NSApplication")),
                                         sel_registerName("sharedApplication"));
  const id view =
      sendMessage<id>(theWindowServer().windowObject(), sel_registerName("contentView"));
  replaceMethod(application, "mainWindow", mainWindow);
  replaceMethod(view, "needsDisplay", contentNeedsDisplay);
  messages.clear();
}

}  // namespace

TEST_F(BrushSize, IgnoresDeltasUpTo19WithoutAskingForTheTool) {
  for (const int delta : {19, -19, 1, -1, 0}) AdjustBrushSize(delta);
  EXPECT_EQ(toolQuestions(), 0);
  EXPECT_TRUE(machine_.lines("posted").empty());
}

TEST_F(BrushSize, TakesDeltasOf20AndMinus20) {
  AdjustBrushSize(20);
  EXPECT_EQ(toolQuestions(), 2);
  AdjustBrushSize(-20);  // back at 0, so the next sample asks again
  AdjustBrushSize(-20);
  EXPECT_EQ(toolQuestions(), 4);
}

TEST_F(BrushSize, TypesOneLargerBrushKeyForTwo300sAndLeaves1) {
  AdjustBrushSize(300);
  EXPECT_TRUE(typed().empty());
  AdjustBrushSize(300);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
  AdjustBrushSize(499);
  EXPECT_TRUE(typed().empty()) << "1 + 499 is one short";
  AdjustBrushSize(20);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
}

TEST_F(BrushSize, TypesOneSmallerBrushKeyForTwoMinus300sAndNothingForAFollowingMinus500) {
  AdjustBrushSize(-300);
  AdjustBrushSize(-300);
  EXPECT_EQ(typed(), std::vector{kUSSmaller});
  AdjustBrushSize(-500);
  EXPECT_TRUE(typed().empty()) << "1 - 500 is -499";
  AdjustBrushSize(-20);
  EXPECT_EQ(typed(), std::vector{kUSSmaller});
}

TEST_F(BrushSize, TypesFrom501EitherWay) {
  for (const int sign : {1, -1}) {
    ResetBrushSizeAccumulator();
    AdjustBrushSize(sign * 500);
    EXPECT_TRUE(typed().empty());
    ResetBrushSizeAccumulator();
    AdjustBrushSize(sign * 501);
    EXPECT_EQ(typed(), std::vector{sign > 0 ? kUSLarger : kUSSmaller});
  }
}

TEST_F(BrushSize, TypesAtMostOneKeyForOneSample) {
  AdjustBrushSize(32767);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
  AdjustBrushSize(499);
  EXPECT_TRUE(typed().empty()) << "what was left over is dropped";
}

TEST_F(BrushSize, CancelsOppositeMotionsOut) {
  AdjustBrushSize(400);
  AdjustBrushSize(-300);
  AdjustBrushSize(400);
  EXPECT_TRUE(typed().empty()) << "400 - 300 + 400 is 500";
  AdjustBrushSize(20);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
}

TEST_F(BrushSize, WrapsTheAccumulatorAt16Bits) {
  AdjustBrushSize(400);
  AdjustBrushSize(32767);  // 33167 is -32369
  EXPECT_EQ(typed(), std::vector{kUSSmaller});
  AdjustBrushSize(-400);
  AdjustBrushSize(-32768);  // 1 - 400 - 32768 = -33167 is 32369
  EXPECT_EQ(typed(), std::vector{kUSLarger});
}

TEST_F(BrushSize, TypesTheSmallerBrushKeyForTheLeastNumberOf16Bits) {
  AdjustBrushSize(-32768);
  EXPECT_EQ(typed(), std::vector{kUSSmaller});
}

TEST_F(BrushSize, AddsTheLow16BitsOfADelta) {
  AdjustBrushSize(65536 + 500);
  EXPECT_TRUE(typed().empty());
  AdjustBrushSize(65536 + 20);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
  AdjustBrushSize(INT_MAX);  // 1 + 0xFFFF is 0
  AdjustBrushSize(-65536 - 501);
  EXPECT_EQ(typed(), std::vector{kUSSmaller});
}

TEST_F(BrushSize, AsksForTheToolOnlyAtTheStartOfEachGesture) {
  for (int i = 0; i < 20; ++i) AdjustBrushSize(100);
  EXPECT_EQ(typed().size(), 3U);
  EXPECT_EQ(toolQuestions(), 2);
  ResetBrushSizeAccumulator();
  AdjustBrushSize(100);
  EXPECT_EQ(toolQuestions(), 4);
}

TEST_F(BrushSize, DoesNotNoticeAToolChangeUntilTheNextGesture) {
  AdjustBrushSize(100);
  theHost().setTool("magicWandTool");
  AdjustBrushSize(500);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
  ResetBrushSizeAccumulator();
  AdjustBrushSize(600);
  EXPECT_TRUE(typed().empty());
}

TEST_F(BrushSize, AsksForTheToolAgainWhenTheAccumulatorReturnsTo0) {
  AdjustBrushSize(100);
  AdjustBrushSize(-100);
  theHost().setTool("lassoTool");
  AdjustBrushSize(600);
  EXPECT_TRUE(typed().empty());
  EXPECT_EQ(toolQuestions(), 4);
}

TEST_F(BrushSize, AccumulatesAndTypesNothingWithTheMagicWand) {
  theHost().setTool("magicWandTool");
  for (int i = 0; i < 5; ++i) AdjustBrushSize(400);
  EXPECT_TRUE(typed().empty());
  EXPECT_EQ(toolQuestions(), 10) << "each sample finds the accumulator at 0";
}

TEST_F(BrushSize, TypesOnlyForTheToolsOfTheBitSet) {
  const auto typesWith = [this](const char* tool) {
    theHost().setTool(tool);
    ResetBrushSizeAccumulator();
    AdjustBrushSize(600);
    return !typed().empty();
  };
  std::vector<int> brushes;
  for (const auto& [tool, number] : kNumberedTools) {
    if (typesWith(tool)) brushes.push_back(number);
  }
  const std::vector<int> expected = {29, 30, 31, 32, 33, 35, 44, 45, 46,
                                     49, 50, 52, 53, 54, 55, 56, 57, 61};
  EXPECT_EQ(brushes, expected);
  EXPECT_FALSE(typesWith("moveTool"));
}

TEST_F(BrushSize, StopsTheGestureForAToolWithoutBrushOptions) {
  theHost().setBrush(std::nullopt);
  for (int i = 0; i < 3; ++i) AdjustBrushSize(600);
  EXPECT_TRUE(typed().empty());
  theHost().setBrush(10.0);
  AdjustBrushSize(600);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
}

TEST_F(BrushSize, IgnoresASampleWhoseToolQueryFailsAndAsksAgain) {
  AdjustBrushSize(0);  // makes the version query before the fault is armed
  theFaults().add({"ActionControl.Get", -1715, 0, 1});
  AdjustBrushSize(600);
  EXPECT_TRUE(typed().empty());
  AdjustBrushSize(400);
  EXPECT_TRUE(typed().empty()) << "the failed sample did not count";
  AdjustBrushSize(101);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
}

TEST_F(BrushSize, KeepsTheLastToolIfTheHostNamesNone) {
  AdjustBrushSize(600);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
  theHost().setTool("");
  ResetBrushSizeAccumulator();
  AdjustBrushSize(600);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
}

TEST_F(BrushSize, TypesNothingBeforeTheHostHasNamedATool) {
  theHost().setTool("");
  AdjustBrushSize(600);
  EXPECT_TRUE(typed().empty());
  EXPECT_EQ(toolQuestions(), 2);
}

TEST_F(BrushSize, IgnoresSamplesWhileAToolBarRedrawIsPending) {
  AdjustBrushSize(300);
  theWindowServer().window().contentNeedsDisplay = true;
  for (int i = 0; i < 5; ++i) AdjustBrushSize(300);
  EXPECT_TRUE(typed().empty());
  theWindowServer().window().contentNeedsDisplay = false;
  AdjustBrushSize(200);
  EXPECT_TRUE(typed().empty()) << "300 and 200 are one short";
  AdjustBrushSize(20);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
}

TEST_F(BrushSize, AsksAndTypesNothingWithoutAMainWindow) {
  theWindowServer().window().isMain = false;
  AdjustBrushSize(600);
  EXPECT_TRUE(typed().empty());
  EXPECT_EQ(toolQuestions(), 0);
}

TEST_F(BrushSize, ChecksTheToolBarThenTheWindowThenTheDelta) {
  AdjustBrushSize(0);  // caches the tool-bar window
  noteMessages();
  AdjustBrushSize(0);
  EXPECT_EQ(messages, (std::vector<std::string>{"needsDisplay", "mainWindow"}));
  noteMessages();
  theWindowServer().window().contentNeedsDisplay = true;
  AdjustBrushSize(600);
  EXPECT_EQ(messages, std::vector<std::string>{"needsDisplay"});
  EXPECT_EQ(toolQuestions(), 0);
}

TEST_F(BrushSize, ReadsTheVersionAtTheFirstSampleOfAnySize) {
  theWindowServer().window().isMain = false;
  AdjustBrushSize(1);
  const auto gets = machine_.lines("get");
  ASSERT_EQ(gets.size(), 1U);
  EXPECT_EQ(gets[0]["reference"][0]["key"], "HstV");
}

TEST_F(BrushSize, PressesAndReleasesTheKeyWithoutCharacterOrModifiersAtHighPriority) {
  AdjustBrushSize(501);
  const auto posted = machine_.lines("posted");
  ASSERT_EQ(posted.size(), 2U);
  EXPECT_EQ(posted[0], keyLine(1, kUSLarger));
  EXPECT_EQ(posted[1], keyLine(3, kUSLarger));
}

TEST_F(BrushSize, PostsTheCodeCharacterAndModifiersOfASimulatedKey) {
  EXPECT_EQ(SimulateKeyboardEvent(0x12345678, 'q', 0x900), 0);
  const auto posted = machine_.lines("posted");
  ASSERT_EQ(posted.size(), 2U);
  EXPECT_EQ(posted[0], keyLine(1, 0x12345678, 'q', 0x900));
  EXPECT_EQ(posted[1], keyLine(3, 0x12345678, 'q', 0x900));
}

TEST_F(BrushSize, ReleasesPostedKeysToTheQueue) {
  SimulateKeyboardEvent(1, 0, 0);
  EXPECT_EQ(theEventManager().queued(), 2U);
  EXPECT_EQ(theEventManager().live(), 2U);
  while (theEventManager().dispatchNext()) {
  }
  EXPECT_EQ(theEventManager().live(), 0U);
}

TEST_F(BrushSize, SkipsAnEventThatCannotBeCreated) {
  theEventManager().failCreations(1);
  EXPECT_EQ(SimulateKeyboardEvent(5, 0, 0), 0);
  const auto posted = machine_.lines("posted");
  ASSERT_EQ(posted.size(), 1U);
  EXPECT_EQ(posted[0], keyLine(3, 5));
  theEventManager().failCreations(2);
  EXPECT_EQ(SimulateKeyboardEvent(5, 0, 0), 0);
  EXPECT_EQ(machine_.lines("posted").size(), 1U);
}

TEST_F(BrushSize, DoesNothingInSetNewBrushSize) {
  AdjustBrushSize(300);
  machine_.drain();
  SetNewBrushSize();
  EXPECT_TRUE(machine_.drain().empty());
  AdjustBrushSize(201);
  EXPECT_EQ(typed(), std::vector{kUSLarger}) << "the accumulator is as it was";
}

TEST_P(BrushSizeLayout, DeterminesTheKeys) {
  const auto& [layout, smaller, larger] = GetParam();
  keyboardLayout() = layout;
  InitBrushSize(nullptr);
  AdjustBrushSize(-501);
  AdjustBrushSize(501);
  EXPECT_EQ(typed(), (std::vector{smaller, larger}));
}

INSTANTIATE_TEST_SUITE_P(
    BrushSize, BrushSizeLayout,
    testing::Values(LayoutKeys{"com.apple.keylayout.US", 33, 30},
                    LayoutKeys{"com.apple.keylayout.German", 41, 42},
                    LayoutKeys{"com.apple.keylayout.French", 30, 50},
                    LayoutKeys{"com.apple.keylayout.SwissGerman", 33, 30},
                    LayoutKeys{"com.apple.keylayout.German-DIN-2137", 33, 30},
                    LayoutKeys{"com.apple.keylayout.CanadianFrench-PC", 33, 30},
                    LayoutKeys{"com.apple.keylayout.French-numerical", 33, 30},
                    LayoutKeys{"com.apple.keylayout.Germa", 33, 30},
                    LayoutKeys{"com.apple.keylayout.german", 33, 30},
                    LayoutKeys{"com.apple.inputmethod.Kotoeri.Japanese", 33, 30},
                    LayoutKeys{"", 33, 30}),
    [](const auto& test) { return "Number" + std::to_string(test.index); });

TEST_F(BrushSize, UsesTheUSKeysForAnOverlongLayoutIdentifier) {
  keyboardLayout() = "com.apple.keylayout.German" + std::string(400, 'x');
  InitBrushSize(nullptr);
  AdjustBrushSize(501);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
}

TEST_F(BrushSize, UsesTheUSKeysIfThePlatformDoesNotNameTheLayout) {
  keyboardLayout() = "com.apple.keylayout.French";
  for (const char* call : {"Mac.TISCopyCurrentKeyboardInputSource", "Mac.TISGetInputSourceProperty",
                           "Mac.CFStringGetCString"}) {
    theFaults().add({call, -1});
    InitBrushSize(nullptr);
    EXPECT_EQ(theFaults().lastFired(), call);
    AdjustBrushSize(501);
    EXPECT_EQ(typed(), std::vector{kUSLarger}) << call;
  }
}

TEST_F(BrushSize, IgnoresTheLanguage) {
  char german[] = "de";
  InitBrushSize(german);
  AdjustBrushSize(501);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
}

TEST_F(BrushSize, DoesNotNoticeALayoutChangeUntilTheNextStart) {
  keyboardLayout() = "com.apple.keylayout.French";
  AdjustBrushSize(501);
  EXPECT_EQ(typed(), std::vector{kUSLarger});
  InitBrushSize(nullptr);
  AdjustBrushSize(501);
  EXPECT_EQ(typed(), std::vector{50});
}

TEST(BrushSizeBeforeStartup, TypesKeyCode0) {
  const Machine machine;
  AdjustBrushSize(501);
  const auto posted = machine.lines("posted");
  ASSERT_EQ(posted.size(), 2U);
  EXPECT_EQ(posted[0], keyLine(1, 0));
  EXPECT_EQ(posted[1], keyLine(3, 0));
  while (theEventManager().dispatchNext()) {
  }
}
