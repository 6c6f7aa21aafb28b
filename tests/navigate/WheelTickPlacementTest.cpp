// The position of ticks.
#include <limits>

#include "tests/support/Input.h"

namespace {

using namespace testing_support;

class WheelTickPlacement : public NavigatorFixture {
 protected:
  WheelTickPlacement() { navigator->m_zoomWithScrollWheel = true; }

  /// Returns the line of a zoom tick, after checking that a pan tick has the same location.
  Lines tickWithMouseAt(double x, double y) {
    server.mouse = {x, y};
    navigator->m_refreshWait = 0;
    navigator->ZoomEvent(11);
    const Lines zoom = wheels();
    EXPECT_EQ(navigator->m_refreshWait, 1);
    navigator->m_refreshWait = 0;
    navigator->PanEvent(0, -100);
    const Lines pan = wheels();
    EXPECT_EQ(navigator->m_refreshWait, 1);
    EXPECT_EQ(zoom.size(), pan.size());
    if (!zoom.empty() && !pan.empty()) {
      EXPECT_EQ(zoom[0]["location"], pan[0]["location"]);
    }
    return zoom;
  }

  void content(double x, double y, double width, double height) {
    server.window().frame = server.window().content = {{x, y}, {width, height}};
  }

  static Lines at(double x, double y) { return {wheelLine({1}, 0, x, y)}; }
};

TEST_F(WheelTickPlacement, UsesTheMouseInsideTheWindow) {
  EXPECT_EQ(tickWithMouseAt(123, 456), at(123, 444));
}

TEST_F(WheelTickPlacement, TruncatesTheMouseTowardsZero) {
  EXPECT_EQ(tickWithMouseAt(123.9, 456.9), at(123, 444));
}

TEST_F(WheelTickPlacement, UsesTheCentreIfTheMouseIsOutsideTheWindow) {
  EXPECT_EQ(tickWithMouseAt(99, 350), at(500, 550));
  EXPECT_EQ(tickWithMouseAt(901, 350), at(500, 550));
  EXPECT_EQ(tickWithMouseAt(200, 49), at(500, 550));
  EXPECT_EQ(tickWithMouseAt(200, 651), at(500, 550));
}

TEST_F(WheelTickPlacement, TreatsTheEdgesAsInsideTheWindow) {
  EXPECT_EQ(tickWithMouseAt(100, 350), at(100, 550));
  EXPECT_EQ(tickWithMouseAt(200, 50), at(200, 850));
  EXPECT_EQ(tickWithMouseAt(200, 650), at(200, 250));
}

TEST_F(WheelTickPlacement, MovesFromTheRightEdgeToTheCentreLine) {
  EXPECT_EQ(tickWithMouseAt(900, 60), at(500, 840));
}

TEST_F(WheelTickPlacement, TruncatesTheCentreTowardsZero) {
  content(-11, -8, 4, 3);  // sums -18 and -13
  EXPECT_EQ(tickWithMouseAt(500, 350), at(-9, 906));
  content(-10, -8, 5, 3);  // sums -15 and -13
  EXPECT_EQ(tickWithMouseAt(500, 350), at(-7, 906));
  content(10, 8, 5, 3);
  EXPECT_EQ(tickWithMouseAt(500, 350), at(12, 891));
}

TEST_F(WheelTickPlacement, AddsEdgesInMoreThanSixteenBits) {
  content(30000, 100, 2000, 100);
  EXPECT_EQ(tickWithMouseAt(0, 0), at(31000, 750));
  content(-32000, 100, 2000, 100);
  EXPECT_EQ(tickWithMouseAt(0, 0), at(-31000, 750));
}

TEST_F(WheelTickPlacement, StartsTheWaitWithoutATickIfTheWindowHasNoWidth) {
  content(100, 50, 0, 600);
  EXPECT_EQ(tickWithMouseAt(500, 350), Lines{});
  EXPECT_EQ(tickWithMouseAt(100, 350), Lines{});
}

TEST_F(WheelTickPlacement, PostsNoTickFromTheRightEdgeOfAWindowOnePixelWide) {
  content(100, 50, 1, 600);
  EXPECT_EQ(tickWithMouseAt(101, 350), Lines{});
  EXPECT_EQ(tickWithMouseAt(100, 350), at(100, 550));
  EXPECT_EQ(tickWithMouseAt(0, 0), at(100, 550));
}

TEST_F(WheelTickPlacement, PostsATickFromTheRightEdgeOfAWindowTwoPixelsWide) {
  content(100, 50, 2, 600);
  EXPECT_EQ(tickWithMouseAt(102, 350), at(101, 550));
}

TEST_F(WheelTickPlacement, PostsNoTickIfTheWindowsWidthIsNegative) {
  content(100, 50, -20, 600);  // the right edge is 80, the centre 90
  EXPECT_EQ(tickWithMouseAt(500, 350), Lines{});
}

TEST_F(WheelTickPlacement, PostsNoTickIfTheWindowsBoundsAreNaN) {
  const double nowhere = std::numeric_limits<double>::quiet_NaN();
  content(nowhere, nowhere, nowhere, nowhere);
  EXPECT_EQ(tickWithMouseAt(500, 350), Lines{});
}

}  // namespace
