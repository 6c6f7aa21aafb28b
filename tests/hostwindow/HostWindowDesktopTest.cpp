// HostWindow.h on GNUstep's AppKit, which others wrote, and on the simulated Mac: both must answer
// the same.
//
// Known differences, which the tests step around or ask the desktop for:
// - A turn of GNUstep's loop draws what is marked, as the platform's does. The simulated host draws
//   when its scenario says so, because a scenario decides how long the host takes
//   (`Desktop::turnDraws`).
// - GNUstep exchanges the main window at the next turn of the loop after a window was hidden or
//   closed, the simulated Mac at once. The desktops make that turn.
// - A new window of GNUstep waits to be drawn until the next turn; `openWindow` makes it.
// - GNUstep's content view also needs display while one of its subviews does. In the simulated Mac
// a
//   scenario sets either state alone, and the window of a test has no subviews.
// - GNUstep draws no window that is off the screen, so `displayIfNeeded` leaves it pending there.
// The
//   plug-in sends this message to the main window alone, which is on the screen.
// - The borders around the content differ, so the tests compare with what the desktop says itself.
#include <gtest/gtest.h>

#include "hostwindow/HostWindow.h"
#include "hostwindow/ObjcMessage.h"
#include "tests/hostwindow/Desktop.h"

namespace {

using testing_support::Desktop;

constexpr CGRect kContent = {{100, 50}, {800, 600}};
constexpr Rect kArea = {.top = 0, .left = 70, .bottom = 31, .right = 150};

class HostWindowDesktop : public testing::Test {
 protected:
  static void expectBounds(const Rect& bounds, const CGRect& expected) {
    EXPECT_EQ(bounds.left, expected.origin.x);
    EXPECT_EQ(bounds.top, expected.origin.y);
    EXPECT_EQ(bounds.right, expected.origin.x + expected.size.width);
    EXPECT_EQ(bounds.bottom, expected.origin.y + expected.size.height);
  }

  static Rect contentBounds() {
    Rect bounds = {1, 2, 3, 4};
    getMainPhotoshopWindowBounds(&bounds);
    return bounds;
  }

  static Rect frameBounds(id window) {
    Rect bounds = {1, 2, 3, 4};
    mrvGetWindowBounds(window, 33, &bounds);
    return bounds;
  }

  static void expectPending(id window, bool pending) {
    EXPECT_EQ(isPhotoshopWindowUpdatePending(), pending);
    EXPECT_EQ(mrvIsWindowUpdatePending(window), pending);
  }

  static bool viewsNeedDisplay(id window) {
    return sendMessage<BOOL>(window, sel_registerName("viewsNeedDisplay")) != 0;
  }

  static void retain(id window) { sendMessage<id>(window, sel_registerName("retain")); }
  static void release(id window) { sendMessage<void>(window, sel_registerName("release")); }

  static void mark(id window) {
    retain(window);
    EXPECT_EQ(mrvInvalWindowRect(window, &kArea), 0);
  }

  /// Closes the window of a test that is about to end.
  void TearDown() override {
    if (getMainPhotoshopWindow() != nullptr) desktop->closeWindow();
  }

  std::unique_ptr<Desktop> desktop = testing_support::openDesktop();
};

TEST_F(HostWindowDesktop, ReturnsNoMainWindowBeforeOneIsOpen) {
  EXPECT_EQ(getMainPhotoshopWindow(), nullptr);
  EXPECT_EQ(mrvGetToolbarWindow(33), nullptr);
}

TEST_F(HostWindowDesktop, ReturnsTheMainWindowWhileItIsOnTheScreen) {
  const id window = desktop->openWindow(kContent);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(getMainPhotoshopWindow(), window);
  EXPECT_EQ(mrvGetToolbarWindow(33), window);
  desktop->hideWindow();
  EXPECT_EQ(getMainPhotoshopWindow(), nullptr);
  EXPECT_EQ(mrvGetToolbarWindow(33), nullptr);
  desktop->showWindow();
  EXPECT_EQ(getMainPhotoshopWindow(), window);
  desktop->closeWindow();
  EXPECT_EQ(getMainPhotoshopWindow(), nullptr);
}

TEST_F(HostWindowDesktop, ReturnsTheWindowThatWasOpenedAfterOneWasClosed) {
  const id first = desktop->openWindow(kContent);
  retain(first);
  desktop->closeWindow();
  const id second = desktop->openWindow({{300, 500}, {400, 250}});
  EXPECT_NE(second, first);
  EXPECT_EQ(getMainPhotoshopWindow(), second);
  expectBounds(contentBounds(), {{300, 500}, {400, 250}});
  release(first);
}

TEST_F(HostWindowDesktop, ReadsTheContentRectangle) {
  desktop->openWindow(kContent);
  expectBounds(contentBounds(), kContent);
  expectBounds(contentBounds(), desktop->content());
}

TEST_F(HostWindowDesktop, ReadsTheFrameWithTheTitleBarAboveTheContent) {
  const id window = desktop->openWindow(kContent);
  const Rect frame = frameBounds(window);
  const Rect content = contentBounds();
  expectBounds(frame, desktop->frame());
  EXPECT_LE(frame.left, content.left);
  EXPECT_LE(frame.top, content.top);
  EXPECT_GE(frame.right, content.right);
  EXPECT_GE(frame.bottom, content.bottom + 10) << "the title bar has the larger y";
}

TEST_F(HostWindowDesktop, ReadsTheFrameOfAHiddenWindow) {
  const id window = desktop->openWindow(kContent);
  const CGRect frame = desktop->frame();
  desktop->hideWindow();
  expectBounds(frameBounds(window), frame);
  expectBounds(contentBounds(), {});
}

TEST_F(HostWindowDesktop, ReportsNothingPendingAfterAWindowWasDrawn) {
  expectPending(desktop->openWindow(kContent), false);
}

TEST_F(HostWindowDesktop, ReportsBothPendingFromMarkingToFlushing) {
  const id window = desktop->openWindow(kContent);
  mark(window);
  expectPending(window, true);
  mark(window);
  expectPending(window, true);
  flushPhotoshopWindow();
  expectPending(window, false);
  flushPhotoshopWindow();
  expectPending(window, false);
}

TEST_F(HostWindowDesktop, StaysPendingUntilTheWindowIsDrawn) {
  const id window = desktop->openWindow(kContent);
  mark(window);
  desktop->turnLoop();
  expectPending(window, !desktop->turnDraws());
  flushPhotoshopWindow();
  expectPending(window, false);
  desktop->turnLoop();
  expectPending(window, false);
}

TEST_F(HostWindowDesktop, MarksAHiddenWindowWithoutMakingTheMainWindowPending) {
  const id window = desktop->openWindow(kContent);
  desktop->hideWindow();
  mark(window);
  EXPECT_TRUE(mrvIsWindowUpdatePending(window));
  EXPECT_TRUE(viewsNeedDisplay(window));
  EXPECT_FALSE(isPhotoshopWindowUpdatePending());
  flushPhotoshopWindow();
  EXPECT_TRUE(mrvIsWindowUpdatePending(window)) << "it is not the main window";
  desktop->closeWindow();
}

TEST_F(HostWindowDesktop, MarksAWindowThatWasClosedWhileItWasRetained) {
  const id window = desktop->openWindow(kContent);
  retain(window);
  desktop->closeWindow();
  EXPECT_FALSE(mrvIsWindowUpdatePending(window));
  mark(window);
  EXPECT_TRUE(mrvIsWindowUpdatePending(window));
  EXPECT_EQ(desktop->references(window), 1);
  release(window);
}

TEST_F(HostWindowDesktop, ReadsTheMouseWithYUpwardAtAnyHeight) {
  const int height = static_cast<int>(desktop->screenHeight());
  for (const int y : {0, 1, 250, height / 2, height - 50, height - 1}) {
    desktop->moveMouse(120 + y, y);
    Point place = {.v = -1, .h = -1};
    getCurrentMouseLocation(&place);
    EXPECT_EQ(place.h, 120 + y);
    EXPECT_EQ(place.v, height - y);
  }
}

TEST_F(HostWindowDesktop, ConvertsTheMouseBackToYDownward) {
  desktop->openWindow(kContent);
  const int height = static_cast<int>(desktop->screenHeight());
  for (const int y : {0, 1, 250, height / 2, height - 50, height - 1}) {
    desktop->moveMouse(500, y);
    Point place = {.v = -1, .h = -1};
    getCurrentMouseLocation(&place);
    convertNSMousePtToCG(&place);
    EXPECT_EQ(place.h, 500);
    EXPECT_EQ(place.v, y);
  }
}

TEST_F(HostWindowDesktop, TakesTheScreensHeightAsZeroWithoutAWindow) {
  Point place = {.v = 350, .h = 7};
  convertNSMousePtToCG(&place);
  EXPECT_EQ(place.h, 7);
  EXPECT_EQ(place.v, -350);
}

TEST_F(HostWindowDesktop, KeepsRetainsAndReleasesInBalance) {
  const id window = desktop->openWindow(kContent);
  const long before = desktop->references(window);
  for (int i = 0; i < 3; ++i) {
    getMainPhotoshopWindow();
    mrvGetToolbarWindow(33);
    contentBounds();
    frameBounds(window);
    expectPending(window, false);
    mark(window);
    flushPhotoshopWindow();
  }
  desktop->turnLoop();
  EXPECT_EQ(desktop->references(window), before);
  retain(window);
  EXPECT_EQ(desktop->references(window), before + 1);
  mrvInvalWindowRect(window, &kArea);
  EXPECT_EQ(desktop->references(window), before);
}

TEST_F(HostWindowDesktop, DoesNothingWithoutAWindow) {
  expectBounds(contentBounds(), {});
  expectBounds(frameBounds(nullptr), {});
  expectPending(nullptr, false);
  flushPhotoshopWindow();
  EXPECT_EQ(mrvInvalWindowRect(nullptr, &kArea), 0);
}

TEST_F(HostWindowDesktop, AnswersMessagesToNullWithZero) {
  EXPECT_EQ(sendMessage<id>(nullptr, sel_registerName("retain")), nullptr);
  EXPECT_EQ(sendMessage<BOOL>(nullptr, sel_registerName("needsDisplay")), 0);
  sendMessage<void>(nullptr, sel_registerName("release"));
  const CGPoint place = sendMessage<CGPoint>(nullptr, sel_registerName("mouseLocation"));
  EXPECT_EQ(place.x, 0);
  EXPECT_EQ(place.y, 0);
  const CGRect frame = sendMessage<CGRect>(nullptr, sel_registerName("frame"));
  EXPECT_EQ(frame.origin.y, 0);
  EXPECT_EQ(frame.size.width, 0);
}

TEST_F(HostWindowDesktop, FindsOneSelectorForANameAndNoUnknownClass) {
  EXPECT_EQ(sel_registerName("viewsNeedDisplay"), sel_registerName("viewsNeedDisplay"));
  EXPECT_NE(sel_registerName("viewsNeedDisplay"), sel_registerName("needsDisplay"));
  EXPECT_EQ(objc_getClass("NSApplication"), objc_getClass("NSApplication"));
  EXPECT_EQ(objc_getClass("NSNothingOfThatName"), nullptr);
}

}  // namespace
