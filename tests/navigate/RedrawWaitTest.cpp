// The pacing of zoom and pan: samples are dropped until the host has redrawn.
#include <limits>

#include "tests/support/Input.h"

namespace {

using namespace testing_support;

class RedrawWait : public NavigatorFixture {
 protected:
  void zoom() { navigator->ZoomEvent(11); }
  void pan() { navigator->PanEvent(-100, 0); }
  void sample(bool isZoom) { isZoom ? zoom() : pan(); }

  std::int16_t& wait() { return navigator->m_refreshWait; }
};

class RedrawWaitRefresh : public NavigatorFixture {
 protected:
  /// Returns whether the rectangles end a wait.
  bool ends(const std::vector<CGRect>& rects) {
    navigator->m_refreshWait = 30;
    screenRefreshCallback(static_cast<std::uint32_t>(rects.size()), rects.data(), navigator);
    EXPECT_TRUE(navigator->m_refreshWait == 30 || navigator->m_refreshWait == 0);
    return navigator->m_refreshWait == 0;
  }
};

TEST_F(RedrawWait, CountsFromFiftyToFiftyOne) {
  for (const bool isZoom : {true, false}) {
    wait() = 50;
    sample(isZoom);
    EXPECT_EQ(wait(), 51);
  }
  EXPECT_EQ(wheels(), Lines{});
}

TEST_F(RedrawWait, EndsAtTheDropAfterFiftyOne) {
  for (const bool isZoom : {true, false}) {
    wait() = 51;
    sample(isZoom);
    EXPECT_EQ(wait(), 0);
  }
  EXPECT_EQ(wheels(), Lines{});
}

TEST_F(RedrawWait, LetsASampleThroughAtZero) {
  for (const bool isZoom : {true, false}) {
    wait() = 0;
    sample(isZoom);
    EXPECT_EQ(wait(), 1);
    EXPECT_EQ(wheels().size(), 1U);
  }
}

TEST_F(RedrawWait, DropsFiftyOneSamplesAfterATickAndLetsTheNextThrough) {
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

TEST_F(RedrawWait, EndsAtOnceWhenTheHostRedraws) {
  zoom();
  zoom();
  EXPECT_EQ(wait(), 2);
  server.refresh({server.window().content});
  EXPECT_EQ(wait(), 0);
  EXPECT_EQ(wheels().size(), 1U);
  zoom();
  EXPECT_EQ(wheels().size(), 1U);
}

TEST_F(RedrawWait, StartsAtOneIfAnUpdateIsPending) {
  for (const bool isZoom : {true, false}) {
    wait() = 0;
    server.window().viewsNeedDisplay = true;
    sample(isZoom);
    EXPECT_EQ(wait(), 1);
  }
  EXPECT_EQ(wheels(), Lines{});
}

TEST_F(RedrawWait, DropsEverySampleWhileAnUpdateStaysPending) {
  server.window().viewsNeedDisplay = true;
  for (int sample = 1; sample <= 200; ++sample) {
    zoom();
    EXPECT_EQ(wait(), sample % 52);
  }
  EXPECT_EQ(wheels(), Lines{});
}

TEST_F(RedrawWait, IgnoresAPendingUpdateOfTheContentView) {
  server.window().contentNeedsDisplay = true;
  zoom();
  EXPECT_EQ(wheels().size(), 1U);
}

TEST_F(RedrawWait, DoesNotStartWithoutAMainWindow) {
  server.window().viewsNeedDisplay = true;
  server.window().isMain = false;
  zoom();
  EXPECT_EQ(wait(), 0);
}

TEST_F(RedrawWait, ComparesTheCounterAsASignedNumber) {
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

TEST_F(RedrawWait, KeepsDroppedSamplesOutOfTheAccumulators) {
  wait() = 51;
  navigator->ZoomEvent(10);
  wait() = 51;
  navigator->PanEvent(-15, 0);
  navigator->ZoomEvent(1);
  for (int i = 0; i < 5; ++i) navigator->PanEvent(-15, 0);
  EXPECT_EQ(wheels(), Lines{});
}

TEST_F(RedrawWaitRefresh, EndsTheWaitIfTheContentIsRedrawn) {
  EXPECT_TRUE(ends({server.window().content}));
}

TEST_F(RedrawWaitRefresh, ChangesNothingWithoutRectangles) {
  EXPECT_FALSE(ends({}));
  screenRefreshCallback(0, nullptr, navigator);
  EXPECT_EQ(navigator->m_refreshWait, 30);
}

TEST_F(RedrawWaitRefresh, IgnoresTheArrayIfTheCountIsZero) {
  navigator->m_refreshWait = 30;
  screenRefreshCallback(0, &server.window().content, navigator);
  EXPECT_EQ(navigator->m_refreshWait, 30);
}

TEST_F(RedrawWaitRefresh, LeavesACounterThatIsNotWaitingUnchanged) {
  for (const int wait : {0, -1, -32768}) {
    navigator->m_refreshWait = static_cast<std::int16_t>(wait);
    screenRefreshCallback(1, &server.window().content, navigator);
    EXPECT_EQ(navigator->m_refreshWait, wait);
  }
}

TEST_F(RedrawWaitRefresh, ChangesNothingWithoutAMainWindow) {
  server.window().isMain = false;
  EXPECT_FALSE(ends({server.window().content}));
  EXPECT_FALSE(ends({{{-10, -10}, {20, 20}}}));
}

TEST_F(RedrawWaitRefresh, IgnoresRectanglesThatOnlyTouchTheContent) {
  EXPECT_FALSE(ends({{{900, 50}, {10, 600}}}));   // to the right
  EXPECT_FALSE(ends({{{90, 50}, {10, 600}}}));    // to the left
  EXPECT_FALSE(ends({{{100, 650}, {800, 10}}}));  // above
  EXPECT_FALSE(ends({{{100, 40}, {800, 10}}}));   // below
}

TEST_F(RedrawWaitRefresh, AcceptsAnOverlapOfOnePixel) {
  EXPECT_TRUE(ends({{{899, 50}, {10, 600}}}));
  EXPECT_TRUE(ends({{{90, 50}, {11, 600}}}));
  EXPECT_TRUE(ends({{{100, 649}, {800, 10}}}));
  EXPECT_TRUE(ends({{{100, 40}, {800, 11}}}));
}

TEST_F(RedrawWaitRefresh, TruncatesEachSideBeforeComparing) {
  EXPECT_TRUE(ends({{{899.9, 50}, {10, 600}}}));
  EXPECT_FALSE(ends({{{90, 50}, {10.9, 600}}}));
  EXPECT_TRUE(ends({{{90.5, 50}, {10.5, 600}}}));
  EXPECT_TRUE(ends({{{100, 649.9}, {800, 10}}}));
  EXPECT_FALSE(ends({{{100, 40}, {800, 10.9}}}));
}

TEST_F(RedrawWaitRefresh, TakesSidesBeyondThirtyTwoBitsAsZero) {
  EXPECT_FALSE(ends({{{0, 0}, {1e300, 1e300}}}));
  const double nowhere = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(ends({{{nowhere, nowhere}, {nowhere, nowhere}}}));
  EXPECT_TRUE(ends({{{nowhere, nowhere}, {nowhere, nowhere}}, server.window().content}));
}

TEST_F(RedrawWaitRefresh, ComparesSidesInMoreThanSixteenBits) {
  EXPECT_TRUE(ends({{{-70000, -70000}, {140000, 140000}}}));
  EXPECT_FALSE(ends({{{65636, 50}, {800, 600}}}));  // 100 in the low 16 bits
}

TEST_F(RedrawWaitRefresh, ComparesYWithoutConversion) {
  server.window().content = {{100, 50}, {800, 100}};
  EXPECT_TRUE(ends({{{100, 50}, {800, 100}}}));
  EXPECT_FALSE(ends({{{100, 750}, {800, 100}}}));  // the window's position from the screen's top
}

TEST_F(RedrawWaitRefresh, IgnoresTheTitleBar) { EXPECT_FALSE(ends({{{100, 650}, {800, 22}}})); }

TEST_F(RedrawWaitRefresh, EndsTheWaitAtAnyOfSeveralRectangles) {
  const CGRect elsewhere = {{2000, 2000}, {10, 10}};
  EXPECT_FALSE(ends({elsewhere, elsewhere, elsewhere}));
  EXPECT_TRUE(ends({elsewhere, elsewhere, server.window().content}));
  EXPECT_TRUE(ends({server.window().content, elsewhere}));
}

TEST_F(RedrawWaitRefresh, ReachesTheNavigatorThroughTheSystemsCallback) {
  navigator->m_refreshWait = 51;
  server.refresh({server.window().content});
  EXPECT_EQ(navigator->m_refreshWait, 0);
}

}  // namespace
