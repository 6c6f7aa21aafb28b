#include <cstdlib>
#include <variant>

#include "tests/support/Input.h"

namespace {

using namespace testing_support;

class Pan : public NavigatorFixture {
 protected:
  Pan() { navigator->m_zoomWithScrollWheel = false; }

  /// Takes one sample with no redraw awaited and returns the wheel lines.
  Lines sample(int dx, int dy) {
    navigator->m_refreshWait = 0;
    navigator->PanEvent(static_cast<short>(dx), static_cast<short>(dy));
    return wheels();
  }

  /// Adds `step` to the accumulator and returns the wheel lines.
  Lines step(int step) {
    const Point start = {.v = 5, .h = 5};
    Point end = start;
    end.v = static_cast<short>(start.v - step);
    navigator->SimulateScrollWheelPanEvent(nullptr, start, end);
    return wheels();
  }

  /// The number of single steps up to the next tick, which is 6 minus the accumulator's value.
  int stepsToTick() {
    int steps = 1;
    while (step(1).empty()) ++steps;
    return steps;
  }

  const Lines right = {wheelLine({0, 8}, 0, 500, 550)};
  const Lines left = {wheelLine({0, -8}, 0, 500, 550)};
  const Lines up = {wheelLine({8}, 0, 500, 550)};
  const Lines down = {wheelLine({-8}, 0, 500, 550)};
};

TEST_F(Pan, PostsOneHorizontalTickForAWideMotion) { EXPECT_EQ(sample(-100, 20), right); }

TEST_F(Pan, HoldsOptionAndCommandForAWideMotionIfTheHostZooms) {
  navigator->m_zoomWithScrollWheel = true;
  navigator->PanEvent(-100, 20);
  EXPECT_EQ(input(), (Lines{keyLine(58, true), keyLine(55, true),
                            wheelLine({8}, kOptionFlag | kCommandFlag, 500, 550),
                            keyLine(55, false), keyLine(58, false)}));
}

TEST_F(Pan, PostsOneVerticalTickForAHighMotion) {
  EXPECT_EQ(sample(20, -100), up);
  EXPECT_EQ(sample(20, 100), down);
}

TEST_F(Pan, HoldsOptionForAHighMotionIfTheHostZooms) {
  navigator->m_zoomWithScrollWheel = true;
  navigator->PanEvent(20, 100);
  EXPECT_EQ(input(),
            (Lines{keyLine(58, true), wheelLine({-8}, kOptionFlag, 500, 550), keyLine(58, false)}));
}

TEST_F(Pan, PostsMinusEightPixelsForTheOppositeMotion) { EXPECT_EQ(sample(100, 20), left); }

TEST_F(Pan, AddsNothingForPlusFifteen) {
  for (int i = 0; i < 100; ++i) EXPECT_EQ(sample(15, 0), Lines{});
  EXPECT_EQ(stepsToTick(), 6);
}

TEST_F(Pan, AddsOneForMinusFifteenAndTicksAtTheSixthSample) {
  for (int i = 0; i < 5; ++i) EXPECT_EQ(sample(-15, 0), Lines{});
  EXPECT_EQ(sample(-15, 0), right);
}

TEST_F(Pan, MovesForANegativeMotionOfAnySize) {
  EXPECT_EQ(sample(-1, 0), Lines{});
  EXPECT_EQ(stepsToTick(), 5);
  EXPECT_EQ(sample(0, -1), Lines{});
  EXPECT_EQ(stepsToTick(), 5);
}

TEST_F(Pan, MovesForAPositiveMotionFromSixteenOn) {
  EXPECT_EQ(sample(0, 15), Lines{});
  EXPECT_EQ(sample(0, 16), Lines{});
  EXPECT_EQ(stepsToTick(), 7);
}

TEST_F(Pan, AddsAVerticalStepOfFourForATieAtThirty) {
  EXPECT_EQ(sample(30, -30), Lines{});
  EXPECT_EQ(stepsToTick(), 2);
  EXPECT_EQ(sample(30, -30), Lines{});
  EXPECT_EQ(sample(30, -30), up);
}

TEST_F(Pan, TreatsEveryTieAsVertical) {
  EXPECT_EQ(sample(-100, -100), up);
  EXPECT_EQ(sample(-100, 100), down);
  EXPECT_EQ(sample(-32768, -32768).at(0)["wheels"].size(), 1U);
  // Not ties: 32767 is smaller than 32768.
  EXPECT_EQ(sample(32767, -32768).at(0)["wheels"].size(), 1U);
  EXPECT_EQ(sample(-32768, 32767).at(0)["wheels"].size(), 2U);
}

TEST_F(Pan, RemovesTheFilterAndAddsNothingAtRest) {
  sample(-1, 0);
  ASSERT_NE(navigator->m_mouseDownHandlerRef, nullptr);
  EXPECT_EQ(sample(0, 0), Lines{});
  EXPECT_EQ(navigator->m_mouseDownHandlerRef, nullptr);
  EXPECT_EQ(stepsToTick(), 5);
}

TEST_F(Pan, AccumulatesSmallStepsOfBothAxesTogether) {
  for (int i = 0; i < 5; ++i) EXPECT_EQ(sample(i % 2 ? -1 : 0, i % 2 ? 0 : -1), Lines{});
  EXPECT_EQ(sample(0, -1), up);
}

TEST_F(Pan, ReachesTheThresholdFromFiveWithAStepOfMinusEleven) {
  EXPECT_EQ(step(5), Lines{});
  EXPECT_EQ(step(-11), down);
  EXPECT_EQ(stepsToTick(), 6);
}

TEST_F(Pan, ActsFromSixStepsEitherWay) {
  EXPECT_EQ(step(5), Lines{});
  EXPECT_EQ(step(1), up);
  EXPECT_EQ(step(-5), Lines{});
  EXPECT_EQ(step(-1), down);
}

TEST_F(Pan, DropsTheExcessOverTheThreshold) {
  EXPECT_EQ(step(500), up);
  EXPECT_EQ(stepsToTick(), 6);
}

TEST_F(Pan, WrapsTheAccumulatorAtSixteenBits) {
  // An end at -32768 makes a step of 32773, which is -32763 in 16 bits.
  navigator->SimulateScrollWheelPanEvent(nullptr, {.v = 5, .h = 5}, {.v = -32768, .h = 5});
  EXPECT_EQ(wheels(), down);
  EXPECT_EQ(step(5), Lines{});
  navigator->SimulateScrollWheelPanEvent(nullptr, {.v = 5, .h = 5}, {.v = -32760, .h = 5});
  EXPECT_EQ(wheels(), down);  // 5 + 32765
}

TEST_F(Pan, TreatsAnEndThatDiffersInBothDirectionsAsHorizontal) {
  navigator->SimulateScrollWheelPanEvent(nullptr, {.v = 5, .h = 5}, {.v = 100, .h = -5});
  EXPECT_EQ(wheels(), right);
}

TEST_F(Pan, PostsEightPixelsForEveryDeflection) {
  EXPECT_EQ(sample(-40, 0), right);
  EXPECT_EQ(sample(-1000, 0), right);
}

TEST_F(Pan, PostsAtTheCentreIfTheMouseIsOutsideTheWindow) {
  server.mouse = {50, 20};
  EXPECT_EQ(sample(-100, 20), (Lines{wheelLine({0, 8}, 0, 500, 550)}));
  server.mouse = {120, 60};
  EXPECT_EQ(sample(-100, 20), (Lines{wheelLine({0, 8}, 0, 120, 840)}));
}

TEST_F(Pan, InstallsAndRemovesTheFilterButPostsNothingWithoutAMainWindow) {
  server.window().isMain = false;
  EXPECT_EQ(sample(-100, 20), Lines{});
  EXPECT_NE(navigator->m_mouseDownHandlerRef, nullptr);
  EXPECT_EQ(navigator->m_refreshWait, 0);
  EXPECT_EQ(sample(0, 0), Lines{});
  EXPECT_EQ(navigator->m_mouseDownHandlerRef, nullptr);
  server.window().isMain = true;
  EXPECT_EQ(stepsToTick(), 6);
}

TEST_F(Pan, InstallsAndRemovesTheFilterForDroppedSamplesToo) {
  navigator->m_refreshWait = 5;
  navigator->PanEvent(1, 0);
  EXPECT_NE(navigator->m_mouseDownHandlerRef, nullptr);
  EXPECT_EQ(navigator->m_refreshWait, 6);
  navigator->PanEvent(0, 0);
  EXPECT_EQ(navigator->m_mouseDownHandlerRef, nullptr);
  EXPECT_EQ(navigator->m_refreshWait, 7);
}

TEST_F(Pan, LeavesTheFilterUnchangedForAZoomSample) {
  navigator->ZoomEvent(3);
  EXPECT_EQ(navigator->m_mouseDownHandlerRef, nullptr);
  navigator->PanEvent(1, 0);
  const EventHandlerRef filter = navigator->m_mouseDownHandlerRef;
  navigator->ZoomEvent(3);
  EXPECT_EQ(navigator->m_mouseDownHandlerRef, filter);
}

TEST_F(Pan, StartsTheWaitWithATick) {
  navigator->PanEvent(-100, 20);
  EXPECT_EQ(navigator->m_refreshWait, 1);
}

/// Compares the ticks of all deflections whose step fits into 16 bits with a second accumulator of
/// integer quotients.
TEST_F(Pan, AddsUpTheSquareOverTwoHundredFiftyForEveryDeflection) {
  simulator::theLog().setSink({});
  int tick = 0;
  server.setApplication([&tick](const simulator::SynthesizedEvent& event) {
    const auto* wheel = std::get_if<simulator::WheelEvent>(&event.input);
    if (wheel != nullptr) tick = wheel->wheels.back();
  });
  int accumulator = 0;
  for (int s = -2800; s <= 2800; ++s) {
    // trunc(s·|s|/250 + 5) in integers
    const int end = (s * std::abs(s) + 1250) / 250;
    for (const bool horizontal : {false, true}) {
      accumulator += 5 - end;
      const int expected = std::abs(accumulator) < 6 ? 0 : (accumulator > 0 ? 8 : -8);
      if (expected != 0) accumulator = 0;
      tick = 0;
      navigator->SimulateScrollbarPan(horizontal ? s : 0, horizontal ? 0 : s);
      server.deliverInput();
      ASSERT_EQ(tick, expected) << s;
    }
  }
}

}  // namespace
