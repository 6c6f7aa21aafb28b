#include <gtest/gtest.h>
#include <objc/message.h>
#include <objc/runtime.h>

#include <string>
#include <vector>

#include "simulator/macos/WindowServer.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;

/// Sends a message without arguments. `Result` is an object, a BOOL, a point or nothing.
template <class Result = id>
Result send(id receiver, const char* selector) {
  return reinterpret_cast<Result (*)(id, SEL)>(&objc_msgSend)(receiver, sel_registerName(selector));
}

class WindowServerWindow : public testing::Test {
 protected:
  std::vector<std::string> misuses() {
    std::vector<std::string> texts;
    for (const Json& line : machine_.lines("misuse")) texts.push_back(line["text"]);
    machine_.expectMisuses(static_cast<int>(texts.size()));
    return texts;
  }

  static id mainWindow() {
    const id application =
        send(reinterpret_cast<id>(objc_getClass("NSApplication")), "sharedApplication");
    return send(application, "mainWindow");
  }

  testing_support::Machine machine_;
  WindowServer& server_ = theWindowServer();
};

using Texts = std::vector<std::string>;

TEST_F(WindowServerWindow, IsFreedWhenTheHostClosesIt) {
  const id window = server_.windowObject();
  server_.closeWindow();
  EXPECT_EQ(mainWindow(), nullptr);
  EXPECT_EQ(send(window, "contentView"), nullptr);
  EXPECT_EQ(misuses(), Texts{"message 'contentView' to a freed NSWindow"});
}

TEST_F(WindowServerWindow, LivesOnWhileItIsRetained) {
  const id window = server_.windowObject();
  send(window, "retain");
  server_.closeWindow();
  EXPECT_EQ(mainWindow(), nullptr);
  EXPECT_NE(send(window, "contentView"), nullptr);
  EXPECT_EQ(misuses(), Texts{});
  send<void>(window, "release");
  EXPECT_EQ(misuses(), Texts{});
  send<void>(window, "release");
  EXPECT_EQ(misuses(), Texts{"message 'release' to a freed NSWindow"});
}

TEST_F(WindowServerWindow, FreesItsContentViewWithIt) {
  const id view = send(server_.windowObject(), "contentView");
  server_.closeWindow();
  EXPECT_FALSE(send<BOOL>(view, "needsDisplay"));
  EXPECT_EQ(misuses(), Texts{"message 'needsDisplay' to a freed NSView"});
}

TEST_F(WindowServerWindow, IsFreedByOneReleaseTooMany) {
  const id window = server_.windowObject();
  send<void>(window, "release");
  EXPECT_FALSE(send<BOOL>(window, "viewsNeedDisplay"));
  EXPECT_EQ(misuses(), (Texts{"the window was released more often than it was retained",
                              "message 'viewsNeedDisplay' to a freed NSWindow"}));
}

TEST_F(WindowServerWindow, IsClosedOnlyOnce) {
  send(server_.windowObject(), "retain");
  server_.closeWindow();
  server_.closeWindow();
  EXPECT_EQ(server_.window().references, 1);
}

TEST_F(WindowServerWindow, IsAnotherObjectAfterClosingAndOpening) {
  const id first = server_.windowObject();
  send(first, "retain");
  server_.window().contentNeedsDisplay = true;
  server_.closeWindow();
  server_.openWindow();
  const id second = server_.windowObject();
  EXPECT_NE(second, first);
  EXPECT_EQ(mainWindow(), second);
  EXPECT_TRUE(send<BOOL>(send(first, "contentView"), "needsDisplay"));
  EXPECT_FALSE(send<BOOL>(send(second, "contentView"), "needsDisplay"));
}

TEST_F(WindowServerWindow, MayBeKeptByOneReferenceAndLeakedByMore) {
  send(server_.windowObject(), "retain");
  server_.closeWindow();
  server_.openWindow();
  server_.reportLeaks();
  EXPECT_EQ(misuses(), Texts{});
  send(server_.windowObject(), "retain");
  server_.reportLeaks();
  EXPECT_EQ(misuses(), Texts{"references to the window were leaked: 1"});
  send<void>(server_.windowObject(), "release");
}

TEST_F(WindowServerWindow, AnswersAnUnknownMessageWithZeroInEveryRegister) {
  const CGPoint place = send<CGPoint>(server_.windowObject(), "cursorPlace");
  EXPECT_EQ(place.x, 0.0);
  EXPECT_EQ(place.y, 0.0);
  EXPECT_EQ(misuses(), Texts{"NSWindow does not understand 'cursorPlace'"});
}

}  // namespace
