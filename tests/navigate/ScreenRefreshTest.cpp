#include <limits>

#include "hostwindow/HostWindow.h"
#include "tests/support/Input.h"

namespace {

using namespace testing_support;

class ScreenRefreshTest : public NavigatorFixture {
 protected:
  /// Whether the rectangles end a wait.
  bool ends(const std::vector<CGRect>& rects) {
    navigator->m_refreshWait = 30;
    screenRefreshCallback(static_cast<std::uint32_t>(rects.size()), rects.data(), navigator);
    EXPECT_TRUE(navigator->m_refreshWait == 30 || navigator->m_refreshWait == 0);
    return navigator->m_refreshWait == 0;
  }
};

TEST_F(ScreenRefreshTest, ARedrawOfTheContentEndsTheWait) {
  EXPECT_TRUE(ends({server.window.content}));
}

TEST_F(ScreenRefreshTest, NoRectanglesChangeNothing) {
  EXPECT_FALSE(ends({}));
  screenRefreshCallback(0, nullptr, navigator);
  EXPECT_EQ(navigator->m_refreshWait, 30);
}

TEST_F(ScreenRefreshTest, ACountOfZeroIsBelievedWhateverTheArray) {
  navigator->m_refreshWait = 30;
  screenRefreshCallback(0, &server.window.content, navigator);
  EXPECT_EQ(navigator->m_refreshWait, 30);
}

TEST_F(ScreenRefreshTest, ACounterThatDoesNotWaitIsLeftAlone) {
  for (const int wait : {0, -1, -32768}) {
    navigator->m_refreshWait = static_cast<std::int16_t>(wait);
    screenRefreshCallback(1, &server.window.content, navigator);
    EXPECT_EQ(navigator->m_refreshWait, wait);
  }
}

TEST_F(ScreenRefreshTest, WithoutAMainWindowNothingChanges) {
  server.window.isMain = false;
  EXPECT_FALSE(ends({server.window.content}));
  EXPECT_FALSE(ends({{{-10, -10}, {20, 20}}}));
}

TEST_F(ScreenRefreshTest, RectanglesThatOnlyTouchDoNotOverlap) {
  EXPECT_FALSE(ends({{{900, 50}, {10, 600}}}));   // right of it
  EXPECT_FALSE(ends({{{90, 50}, {10, 600}}}));    // left
  EXPECT_FALSE(ends({{{100, 650}, {800, 10}}}));  // above
  EXPECT_FALSE(ends({{{100, 40}, {800, 10}}}));   // below
}

TEST_F(ScreenRefreshTest, OnePixelOfOverlapIsEnough) {
  EXPECT_TRUE(ends({{{899, 50}, {10, 600}}}));
  EXPECT_TRUE(ends({{{90, 50}, {11, 600}}}));
  EXPECT_TRUE(ends({{{100, 649}, {800, 10}}}));
  EXPECT_TRUE(ends({{{100, 40}, {800, 11}}}));
}

TEST_F(ScreenRefreshTest, EachSideIsTruncatedFirst) {
  EXPECT_TRUE(ends({{{899.9, 50}, {10, 600}}}));
  EXPECT_FALSE(ends({{{90, 50}, {10.9, 600}}}));
  EXPECT_TRUE(ends({{{90.5, 50}, {10.5, 600}}}));
  EXPECT_TRUE(ends({{{100, 649.9}, {800, 10}}}));
  EXPECT_FALSE(ends({{{100, 40}, {800, 10.9}}}));
}

TEST_F(ScreenRefreshTest, SidesBeyondThirtyTwoBitsCountAsZero) {
  EXPECT_FALSE(ends({{{0, 0}, {1e300, 1e300}}}));
  const double nowhere = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(ends({{{nowhere, nowhere}, {nowhere, nowhere}}}));
  EXPECT_TRUE(ends({{{nowhere, nowhere}, {nowhere, nowhere}}, server.window.content}));
}

TEST_F(ScreenRefreshTest, SidesAreComparedInMoreThanSixteenBits) {
  EXPECT_TRUE(ends({{{-70000, -70000}, {140000, 140000}}}));
  EXPECT_FALSE(ends({{{65636, 50}, {800, 600}}}));  // its low 16 bits would lie at 100
}

TEST_F(ScreenRefreshTest, YIsComparedWithoutConversion) {
  server.window.content = {{100, 50}, {800, 100}};
  EXPECT_TRUE(ends({{{100, 50}, {800, 100}}}));
  EXPECT_FALSE(ends({{{100, 750}, {800, 100}}}));  // where the window is, from the screen's top
}

TEST_F(ScreenRefreshTest, TheContentCountsNotTheTitleBar) {
  EXPECT_FALSE(ends({{{100, 650}, {800, 22}}}));
}

TEST_F(ScreenRefreshTest, AnyOfSeveralRectanglesEndsTheWait) {
  const CGRect elsewhere = {{2000, 2000}, {10, 10}};
  EXPECT_FALSE(ends({elsewhere, elsewhere, elsewhere}));
  EXPECT_TRUE(ends({elsewhere, elsewhere, server.window.content}));
  EXPECT_TRUE(ends({server.window.content, elsewhere}));
}

TEST_F(ScreenRefreshTest, TheSystemsNoticesReachTheOneNavigator) {
  navigator->m_refreshWait = 51;
  server.refresh({server.window.content});
  EXPECT_EQ(navigator->m_refreshWait, 0);
}

}  // namespace
