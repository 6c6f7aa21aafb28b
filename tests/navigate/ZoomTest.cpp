#include "tests/support/Input.h"

namespace {

using namespace testing_support;

class Zoom : public NavigatorFixture {
 protected:
  /// Takes one sample with no redraw awaited and returns the tick's wheel delta, 0 if there is no
  /// tick.
  int sample(int z) {
    navigator->m_refreshWait = 0;
    navigator->ZoomEvent(static_cast<short>(z));
    const Lines lines = wheels();
    EXPECT_LE(lines.size(), 1U);
    return lines.empty() ? 0 : lines[0]["wheels"][0].get<int>();
  }
};

TEST_F(Zoom, PostsOneTickForFivePlusFivePlusOneAndStartsAgain) {
  EXPECT_EQ(sample(5), 0);
  EXPECT_EQ(sample(5), 0);
  EXPECT_EQ(sample(1), 1);
  // The accumulator was reset to 0.
  EXPECT_EQ(sample(10), 0);
  EXPECT_EQ(sample(1), 1);
}

TEST_F(Zoom, PostsOneZoomOutTickForMinusEleven) { EXPECT_EQ(sample(-11), -1); }

TEST_F(Zoom, ActsFromElevenCountsEitherWay) {
  EXPECT_EQ(sample(10), 0);
  EXPECT_EQ(sample(-20), 0);
  EXPECT_EQ(sample(-1), -1);
  EXPECT_EQ(sample(-10), 0);
  EXPECT_EQ(sample(20), 0);
  EXPECT_EQ(sample(1), 1);
}

TEST_F(Zoom, DropsTheExcessOverTheThreshold) {
  EXPECT_EQ(sample(1000), 1);
  EXPECT_EQ(sample(10), 0);
}

TEST_F(Zoom, WrapsTheAccumulatorAtSixteenBits) {
  EXPECT_EQ(sample(10), 0);
  EXPECT_EQ(sample(32767), -1);  // 32777 is -32759
  EXPECT_EQ(sample(-10), 0);
  EXPECT_EQ(sample(-32768), 1);  // -32778 is 32758
  EXPECT_EQ(sample(1), 0);
  EXPECT_EQ(sample(32767), -1);  // 32768 is -32768
}

TEST_F(Zoom, ZoomsOutForTheSmallestSample) { EXPECT_EQ(sample(-32768), -1); }

TEST_F(Zoom, AddsTheLowSixteenBitsOfADelta) {
  navigator->SimulateScrollWheelZoom(10);
  navigator->SimulateScrollWheelZoom(0x7FFF0000);
  navigator->SimulateScrollWheelZoom(0x10000);
  EXPECT_EQ(wheels(), Lines{});
  navigator->SimulateScrollWheelZoom(0x7FFFFFFF);  // -1
  navigator->SimulateScrollWheelZoom(2);
  EXPECT_EQ(wheels().size(), 1U);
}

TEST_F(Zoom, HoldsOptionIfTheHostScrollsWithTheWheel) {
  navigator->m_zoomWithScrollWheel = false;
  navigator->ZoomEvent(11);
  EXPECT_EQ(input(),
            (Lines{keyLine(58, true), wheelLine({1}, kOptionFlag, 500, 550), keyLine(58, false)}));
}

TEST_F(Zoom, HoldsNoKeyIfTheHostZoomsWithTheWheel) {
  navigator->m_zoomWithScrollWheel = true;
  navigator->ZoomEvent(-11);
  EXPECT_EQ(input(), (Lines{wheelLine({-1}, 0, 500, 550)}));
}

TEST_F(Zoom, LeavesTheAccumulatorUnchangedWithoutAMainWindow) {
  EXPECT_EQ(sample(10), 0);
  server.window().isMain = false;
  EXPECT_EQ(sample(1), 0);
  EXPECT_EQ(sample(1000), 0);
  EXPECT_EQ(navigator->m_refreshWait, 0);  // neither sample was dropped
  server.window().isMain = true;
  EXPECT_EQ(sample(1), 1);
}

TEST_F(Zoom, StartsTheWaitWithATick) {
  navigator->ZoomEvent(10);
  EXPECT_EQ(navigator->m_refreshWait, 0);
  navigator->ZoomEvent(1);
  EXPECT_EQ(navigator->m_refreshWait, 1);
}

TEST_F(Zoom, LeavesARunningWaitUnchanged) {
  navigator->m_refreshWait = 17;
  navigator->SimulateScrollWheelZoom(11);
  EXPECT_EQ(navigator->m_refreshWait, 17);
  navigator->m_refreshWait = -3;
  navigator->SimulateScrollWheelZoom(11);
  EXPECT_EQ(navigator->m_refreshWait, 1);
}

TEST_F(Zoom, DropsSamplesDuringAWaitThatAPanTickStarted) {
  navigator->PanEvent(-100, 20);
  EXPECT_EQ(wheels().size(), 1U);
  navigator->ZoomEvent(11);
  EXPECT_EQ(wheels(), Lines{});
  EXPECT_EQ(navigator->m_refreshWait, 2);
}

}  // namespace
