// The pacing that zoom and pan share: samples are dropped until the host has redrawn.
#include "tests/support/Input.h"

namespace {

using namespace testing_support;

class ThrottleTest : public NavigatorFixture {
 protected:
  void zoom() { navigator->ZoomEvent(11); }
  void pan() { navigator->PanEvent(-100, 0); }
  void sample(bool isZoom) { isZoom ? zoom() : pan(); }

  std::int16_t& wait() { return navigator->m_refreshWait; }
};

TEST_F(ThrottleTest, AtFiftyTheCounterBecomesFiftyOne) {
  for (const bool isZoom : {true, false}) {
    wait() = 50;
    sample(isZoom);
    EXPECT_EQ(wait(), 51);
  }
  EXPECT_EQ(wheels(), Lines{});
}

TEST_F(ThrottleTest, AtFiftyOneTheCounterBecomesZero) {
  for (const bool isZoom : {true, false}) {
    wait() = 51;
    sample(isZoom);
    EXPECT_EQ(wait(), 0);
  }
  EXPECT_EQ(wheels(), Lines{});
}

TEST_F(ThrottleTest, AtZeroTheSampleIsActedOn) {
  for (const bool isZoom : {true, false}) {
    wait() = 0;
    sample(isZoom);
    EXPECT_EQ(wait(), 1);
    EXPECT_EQ(wheels().size(), 1U);
  }
}

TEST_F(ThrottleTest, AfterATickFiftyOneSamplesAreDroppedAndTheNextIsActedOn) {
  for (const bool isZoom : {true, false}) {
    wait() = 0;
    sample(isZoom);
    EXPECT_EQ(wheels().size(), 1U);
    for (int dropped = 0; dropped < 51; ++dropped) {
      EXPECT_EQ(wait(), dropped + 1);
      sample(isZoom);
    }
    EXPECT_EQ(wheels(), Lines{});
    sample(isZoom);
    EXPECT_EQ(wheels().size(), 1U);
  }
}

TEST_F(ThrottleTest, ARedrawEndsTheWaitAtOnce) {
  zoom();
  zoom();
  EXPECT_EQ(wait(), 2);
  server.refresh({server.window.content});
  EXPECT_EQ(wait(), 0);
  EXPECT_EQ(wheels().size(), 1U);
  zoom();
  EXPECT_EQ(wheels().size(), 1U);
}

TEST_F(ThrottleTest, AnUpdatePendingAtZeroStartsTheWaitAtOne) {
  for (const bool isZoom : {true, false}) {
    wait() = 0;
    server.window.viewsNeedDisplay = true;
    sample(isZoom);
    EXPECT_EQ(wait(), 1);
  }
  EXPECT_EQ(wheels(), Lines{});
}

TEST_F(ThrottleTest, APendingUpdateThatStaysLetsNoSampleThrough) {
  server.window.viewsNeedDisplay = true;
  for (int sample = 1; sample <= 200; ++sample) {
    zoom();
    EXPECT_EQ(wait(), sample % 52);
  }
  EXPECT_EQ(wheels(), Lines{});
}

TEST_F(ThrottleTest, OnlyTheViewsOfTheWindowCountNotItsContentView) {
  server.window.contentNeedsDisplay = true;
  zoom();
  EXPECT_EQ(wheels().size(), 1U);
}

TEST_F(ThrottleTest, WithoutAMainWindowNoUpdateIsPending) {
  server.window.viewsNeedDisplay = true;
  server.window.isMain = false;
  zoom();
  EXPECT_EQ(wait(), 0);
}

TEST_F(ThrottleTest, TheCounterIsComparedWithItsSign) {
  wait() = -5;
  zoom();
  EXPECT_EQ(wait(), -4);
  wait() = 32767;
  zoom();
  EXPECT_EQ(wait(), 0);
  wait() = -32768;
  zoom();
  EXPECT_EQ(wait(), -32767);
  EXPECT_EQ(wheels(), Lines{});
}

TEST_F(ThrottleTest, DroppedSamplesAddNothingToTheAccumulators) {
  wait() = 51;
  navigator->ZoomEvent(10);
  wait() = 51;
  navigator->PanEvent(-15, 0);
  navigator->ZoomEvent(1);
  for (int i = 0; i < 5; ++i) navigator->PanEvent(-15, 0);
  EXPECT_EQ(wheels(), Lines{});
}

}  // namespace
