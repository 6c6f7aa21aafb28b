#include <gtest/gtest.h>

#include <limits>

#include "hostwindow/HostWindow.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

class HostWindow : public testing::Test {
 protected:
  static void expectRect(const Rect& rect, int top, int left, int bottom, int right) {
    EXPECT_EQ(rect.top, top);
    EXPECT_EQ(rect.left, left);
    EXPECT_EQ(rect.bottom, bottom);
    EXPECT_EQ(rect.right, right);
  }

  static Rect contentBounds() {
    Rect bounds = {1, 2, 3, 4};
    getMainPhotoshopWindowBounds(&bounds);
    return bounds;
  }

  static Rect boundsOf(id window) {
    Rect bounds = {1, 2, 3, 4};
    mrvGetWindowBounds(window, 33, &bounds);
    return bounds;
  }

  Point mouseAt(double x, double y) {
    server.mouse = {x, y};
    Point place = {1, 2};
    getCurrentMouseLocation(&place);
    return place;
  }

  static int flipped(int v) {
    Point place = {.v = static_cast<short>(v), .h = 77};
    convertNSMousePtToCG(&place);
    EXPECT_EQ(place.h, 77);
    return place.v;
  }

  Machine machine;
  WindowServer& server = theWindowServer();
};

TEST_F(HostWindow, ReturnsTheApplicationsMainWindow) {
  EXPECT_EQ(getMainPhotoshopWindow(), server.windowObject());
  server.window().isMain = false;
  EXPECT_EQ(getMainPhotoshopWindow(), nullptr);
}

TEST_F(HostWindow, ReturnsTheMainWindowAsToolbarWindowForEveryId) {
  for (const UInt32 window : {0U, 33U, 0xFFFFFFFFU}) {
    EXPECT_EQ(mrvGetToolbarWindow(window), server.windowObject());
  }
  server.window().isMain = false;
  EXPECT_EQ(mrvGetToolbarWindow(33), nullptr);
}

TEST_F(HostWindow, ReportsAPendingUpdateWhileViewsNeedDisplay) {
  EXPECT_FALSE(isPhotoshopWindowUpdatePending());
  server.window().viewsNeedDisplay = true;
  EXPECT_TRUE(isPhotoshopWindowUpdatePending());
  server.window().isMain = false;
  EXPECT_FALSE(isPhotoshopWindowUpdatePending());
}

TEST_F(HostWindow, DrawsTheMainWindowWhenFlushed) {
  server.window().viewsNeedDisplay = true;
  flushPhotoshopWindow();
  EXPECT_EQ(server.displaysForced, 1);
  EXPECT_FALSE(isPhotoshopWindowUpdatePending());
  server.window().isMain = false;
  flushPhotoshopWindow();
  EXPECT_EQ(server.displaysForced, 1);
}

TEST_F(HostWindow, AddsFractionsBeforeTruncatingThem) {
  server.window().content = {{10.9, 20.2}, {100.5, 50.9}};
  expectRect(contentBounds(), 20, 10, 71, 111);
}

TEST_F(HostWindow, DistinguishesTheContentFromTheFrame) {
  expectRect(contentBounds(), 50, 100, 650, 900);
  expectRect(boundsOf(server.windowObject()), 50, 100, 672, 900);
}

TEST_F(HostWindow, ReturnsZeroBoundsWithoutAWindow) {
  server.window().isMain = false;
  expectRect(contentBounds(), 0, 0, 0, 0);
  expectRect(boundsOf(nullptr), 0, 0, 0, 0);
}

TEST_F(HostWindow, TruncatesNegativeCoordinatesTowardsZero) {
  server.window().content = {{-10.9, -20.2}, {5.5, 10.9}};
  expectRect(contentBounds(), -20, -10, -9, -5);
  server.window().frame = {{-0.9, -0.1}, {0.5, 0.05}};
  expectRect(boundsOf(server.windowObject()), 0, 0, 0, 0);
}

TEST_F(HostWindow, KeepsTheLowBitsOfCoordinatesBeyondSixteenBits) {
  server.window().content = {{40000, 65536}, {65536, 100}};
  expectRect(contentBounds(), 0, -25536, 100, -25536);
}

TEST_F(HostWindow, TurnsCoordinatesBeyondThirtyTwoBitsIntoZero) {
  server.window().content = {{2147483648.0, -2147483649.0}, {1e300, 1.0}};
  expectRect(contentBounds(), 0, 0, 0, 0);
  server.window().content = {{2147483647.9, -2147483648.9}, {0, 0}};
  expectRect(contentBounds(), 0, -1, 0, -1);
}

TEST_F(HostWindow, TurnsNaNAndInfiniteCoordinatesIntoZero) {
  const double infinity = std::numeric_limits<double>::infinity();
  server.window().content = {{std::numeric_limits<double>::quiet_NaN(), -infinity}, {infinity, 7}};
  expectRect(contentBounds(), 0, 0, 0, 0);
}

TEST_F(HostWindow, TruncatesTheMouseTowardsZero) {
  Point place = mouseAt(123.9, 456.7);
  EXPECT_EQ(place.h, 123);
  EXPECT_EQ(place.v, 456);
  place = mouseAt(-123.9, -0.7);
  EXPECT_EQ(place.h, -123);
  EXPECT_EQ(place.v, 0);
}

TEST_F(HostWindow, WrapsOrZeroesAMouseBeyondAllBounds) {
  Point place = mouseAt(65537.5, -65537.5);
  EXPECT_EQ(place.h, 1);
  EXPECT_EQ(place.v, -1);
  place = mouseAt(1e18, std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(place.h, 0);
  EXPECT_EQ(place.v, 0);
}

TEST_F(HostWindow, FlipsPointsAtTheScreensHeight) {
  EXPECT_EQ(flipped(350), 550);
  EXPECT_EQ(flipped(0), 900);
  EXPECT_EQ(flipped(-100), 1000);
  EXPECT_EQ(flipped(1000), -100);
  server.screen.size.height = 900.9;
  EXPECT_EQ(flipped(350), 550);
  EXPECT_EQ(flipped(901), 0);
}

TEST_F(HostWindow, IgnoresTheScreensOrigin) {
  server.screen.origin = {-500, 300};
  EXPECT_EQ(flipped(350), 550);
}

TEST_F(HostWindow, TakesTheHeightAsZeroWithoutAScreen) {
  server.windowHasScreen = false;
  EXPECT_EQ(flipped(350), -350);
  EXPECT_EQ(flipped(-32768), -32768);
  server.windowHasScreen = true;
  server.window().isMain = false;
  EXPECT_EQ(flipped(350), -350);
}

TEST_F(HostWindow, ReportsAWindowsPendingUpdateWhileItsContentViewNeedsDisplay) {
  EXPECT_FALSE(mrvIsWindowUpdatePending(server.windowObject()));
  server.window().viewsNeedDisplay = true;
  EXPECT_FALSE(mrvIsWindowUpdatePending(server.windowObject()));
  server.window().contentNeedsDisplay = true;
  EXPECT_TRUE(mrvIsWindowUpdatePending(server.windowObject()));
  EXPECT_FALSE(mrvIsWindowUpdatePending(nullptr));
}

TEST_F(HostWindow, InvalidatesTheRectangleAndReleasesOneReference) {
  server.window().references = 2;  // the caller has retained the window
  const Rect rect = {.top = 10, .left = -20, .bottom = 41, .right = 60};
  EXPECT_EQ(mrvInvalWindowRect(server.windowObject(), &rect), 0);
  EXPECT_EQ(server.window().references, 1);
  ASSERT_EQ(server.invalidated.size(), 1U);
  const CGRect& marked = server.invalidated[0];
  EXPECT_EQ(marked.origin.x, -20.0);
  EXPECT_EQ(marked.origin.y, 10.0);
  EXPECT_EQ(marked.size.width, 80.0);
  EXPECT_EQ(marked.size.height, 31.0);
}

TEST_F(HostWindow, MakesTheWindowPendingByMarkingItsContentView) {
  server.window().references = 2;
  const Rect rect = {.top = 0, .left = 0, .bottom = 10, .right = 10};
  mrvInvalWindowRect(server.windowObject(), &rect);
  EXPECT_TRUE(mrvIsWindowUpdatePending(server.windowObject()));
  EXPECT_TRUE(isPhotoshopWindowUpdatePending());
}

TEST_F(HostWindow, DrawsTheContentViewWithTheWindowWhenFlushed) {
  server.window().viewsNeedDisplay = true;
  server.window().contentNeedsDisplay = true;
  flushPhotoshopWindow();
  EXPECT_FALSE(isPhotoshopWindowUpdatePending());
  EXPECT_FALSE(mrvIsWindowUpdatePending(server.windowObject()));
}

TEST_F(HostWindow, SubtractsInMoreThanSixteenBitsWhenInvalidating) {
  server.window().references = 2;
  const Rect rect = {.top = -32768, .left = -32768, .bottom = 32767, .right = 32767};
  mrvInvalWindowRect(server.windowObject(), &rect);
  EXPECT_EQ(server.invalidated.at(0).size.width, 65535.0);
  EXPECT_EQ(server.invalidated.at(0).size.height, 65535.0);
}

TEST_F(HostWindow, OverreleasesAWindowThatTheCallerHasNotRetained) {
  machine.expectMisuse("the window was released more often than it was retained");
  const Rect rect = {};
  mrvInvalWindowRect(server.windowObject(), &rect);
  EXPECT_EQ(server.window().references, 0);
}

TEST_F(HostWindow, DoesNothingWhenInvalidatingNoWindow) {
  const Rect rect = {1, 2, 3, 4};
  EXPECT_EQ(mrvInvalWindowRect(nullptr, &rect), 0);
  EXPECT_TRUE(server.invalidated.empty());
  EXPECT_EQ(server.window().references, 1);
}

}  // namespace
