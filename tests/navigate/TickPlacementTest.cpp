// Where ticks go.
#include <limits>

#include "tests/support/Input.h"

namespace {

using namespace testing_support;

class TickPlacementTest : public NavigatorFixture {
 protected:
  TickPlacementTest() { navigator->m_zoomWithScrollWheel = true; }

  /// The place of one tick, measured from the screen's top, of zoom and of pan alike.
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
    server.window.frame = server.window.content = {{x, y}, {width, height}};
  }

  static Lines at(double x, double y) { return {wheelLine({1}, 0, x, y)}; }
};

TEST_F(TickPlacementTest, TheMouseInsideTheWindowIsThePlace) {
  EXPECT_EQ(tickWithMouseAt(123, 456), at(123, 444));
}

TEST_F(TickPlacementTest, TheMouseIsTruncatedTowardZero) {
  EXPECT_EQ(tickWithMouseAt(123.9, 456.9), at(123, 444));
}

TEST_F(TickPlacementTest, TheMouseOutsideTheWindowPutsTheTickAtTheCentre) {
  EXPECT_EQ(tickWithMouseAt(99, 350), at(500, 550));
  EXPECT_EQ(tickWithMouseAt(901, 350), at(500, 550));
  EXPECT_EQ(tickWithMouseAt(200, 49), at(500, 550));
  EXPECT_EQ(tickWithMouseAt(200, 651), at(500, 550));
}

TEST_F(TickPlacementTest, TheEdgesBelongToTheWindow) {
  EXPECT_EQ(tickWithMouseAt(100, 350), at(100, 550));
  EXPECT_EQ(tickWithMouseAt(200, 50), at(200, 850));
  EXPECT_EQ(tickWithMouseAt(200, 650), at(200, 250));
}

TEST_F(TickPlacementTest, TheMouseExactlyOnTheRightEdgeMovesToTheHorizontalCentre) {
  EXPECT_EQ(tickWithMouseAt(900, 60), at(500, 840));
}

TEST_F(TickPlacementTest, TheCentreOfOddSumsIsTruncatedTowardZero) {
  content(-11, -8, 4, 3);  // sums -18 and -13
  EXPECT_EQ(tickWithMouseAt(500, 350), at(-9, 906));
  content(-10, -8, 5, 3);  // sums -15 and -13
  EXPECT_EQ(tickWithMouseAt(500, 350), at(-7, 906));
  content(10, 8, 5, 3);
  EXPECT_EQ(tickWithMouseAt(500, 350), at(12, 891));
}

TEST_F(TickPlacementTest, SumsOfEdgesDoNotWrapAtSixteenBits) {
  content(30000, 100, 2000, 100);
  EXPECT_EQ(tickWithMouseAt(0, 0), at(31000, 750));
  content(-32000, 100, 2000, 100);
  EXPECT_EQ(tickWithMouseAt(0, 0), at(-31000, 750));
}

TEST_F(TickPlacementTest, AWindowOfNoWidthGetsNoTickButTheWaitStarts) {
  content(100, 50, 0, 600);
  EXPECT_EQ(tickWithMouseAt(500, 350), Lines{});
  EXPECT_EQ(tickWithMouseAt(100, 350), Lines{});
}

TEST_F(TickPlacementTest, AWindowOneWideHasNoPlaceForAMouseOnItsRightEdge) {
  content(100, 50, 1, 600);
  EXPECT_EQ(tickWithMouseAt(101, 350), Lines{});
  EXPECT_EQ(tickWithMouseAt(100, 350), at(100, 550));
  EXPECT_EQ(tickWithMouseAt(0, 0), at(100, 550));
}

TEST_F(TickPlacementTest, AWindowTwoWideHasAPlaceForAMouseOnItsRightEdge) {
  content(100, 50, 2, 600);
  EXPECT_EQ(tickWithMouseAt(102, 350), at(101, 550));
}

TEST_F(TickPlacementTest, AWindowTurnedInsideOutIsLeftAtTheSameTest) {
  content(100, 50, -20, 600);  // right is 80: the centre, 90, is beyond it
  EXPECT_EQ(tickWithMouseAt(500, 350), Lines{});
}

TEST_F(TickPlacementTest, AWindowThatIsNowhereGetsNoTick) {
  const double nowhere = std::numeric_limits<double>::quiet_NaN();
  content(nowhere, nowhere, nowhere, nowhere);
  EXPECT_EQ(tickWithMouseAt(500, 350), Lines{});
}

}  // namespace
