#include <gmock/gmock.h>
#include <objc/message.h>
#include <objc/runtime.h>

#include <string>
#include <variant>
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
  /// Expects these misuses so far, and no others until the end of the test.
  void expectMisuses(const std::vector<std::string>& texts) {
    std::vector<std::string> found;
    for (const Json& line : machine_.lines("misuse")) found.push_back(line["text"]);
    EXPECT_EQ(found, texts);
    machine_.expectMisuses(testing::ElementsAreArray(texts));
  }

  static id mainWindow() {
    const id application =
        send(reinterpret_cast<id>(objc_getClass("NSApplication")), "sharedApplication");
    return send(application, "mainWindow");
  }

  testing_support::Machine machine_;
  WindowServer& server_ = theWindowServer();
};

TEST_F(WindowServerWindow, IsFreedWhenTheHostClosesIt) {
  const id window = server_.windowObject();
  server_.closeWindow();
  EXPECT_EQ(mainWindow(), nullptr);
  EXPECT_EQ(send(window, "contentView"), nullptr);
  expectMisuses({"message 'contentView' to a freed NSWindow"});
}

TEST_F(WindowServerWindow, LivesOnWhileItIsRetained) {
  const id window = server_.windowObject();
  send(window, "retain");
  server_.closeWindow();
  EXPECT_EQ(mainWindow(), nullptr);
  EXPECT_NE(send(window, "contentView"), nullptr);
  expectMisuses({});
  send<void>(window, "release");
  expectMisuses({});
  send<void>(window, "release");
  expectMisuses({"message 'release' to a freed NSWindow"});
}

TEST_F(WindowServerWindow, FreesItsContentViewWithIt) {
  const id view = send(server_.windowObject(), "contentView");
  server_.closeWindow();
  EXPECT_FALSE(send<BOOL>(view, "needsDisplay"));
  expectMisuses({"message 'needsDisplay' to a freed NSView"});
}

TEST_F(WindowServerWindow, IsFreedByOneReleaseTooMany) {
  const id window = server_.windowObject();
  send<void>(window, "release");
  EXPECT_FALSE(send<BOOL>(window, "viewsNeedDisplay"));
  expectMisuses({"the window was released more often than it was retained",
                 "message 'viewsNeedDisplay' to a freed NSWindow"});
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
  expectMisuses({});
  send(server_.windowObject(), "retain");
  server_.reportLeaks();
  expectMisuses({"references to the window were leaked: 1"});
  send<void>(server_.windowObject(), "release");
}

TEST_F(WindowServerWindow, AnswersAnUnknownMessageWithZeroInEveryRegister) {
  const CGPoint place = send<CGPoint>(server_.windowObject(), "cursorPlace");
  EXPECT_EQ(place.x, 0.0);
  EXPECT_EQ(place.y, 0.0);
  expectMisuses({"NSWindow does not understand 'cursorPlace'"});
}

class WindowServerInput : public WindowServerWindow {
 protected:
  WindowServerInput() {
    server_.setApplication([this](const SynthesizedEvent& event) {
      const CGKeyCode key = std::get<KeyboardEvent>(event.input).key;
      delivered_.push_back(key);
      // The answer of an application to one key.
      if (key == 1) post(10);
    });
  }
  ~WindowServerInput() override {
    server_.setApplication([](const SynthesizedEvent&) {});
  }

  void post(CGKeyCode key) {
    SynthesizedEvent event;
    event.input = KeyboardEvent{key, true};
    event.type = kCGEventKeyDown;
    server_.post(kCGSessionEventTap, event);
  }

  std::vector<int> delivered_;
};

TEST_F(WindowServerInput, WaitsUntilItIsDeliveredAndKeepsItsOrder) {
  post(1);
  post(2);
  EXPECT_TRUE(delivered_.empty());
  server_.deliverInput();
  EXPECT_EQ(delivered_, (std::vector{1, 2, 10}));
  server_.deliverInput();
  EXPECT_EQ(delivered_.size(), 3U);
}

TEST_F(WindowServerInput, IsLoggedWhenItIsPosted) {
  post(7);
  SynthesizedEvent wheel;
  wheel.input = WheelEvent{0, {1, -2}};
  wheel.flags = 0x80000;
  wheel.type = kCGEventScrollWheel;
  wheel.location = {1.5, 2};
  server_.post(2, wheel);
  const std::vector<Json> lines = machine_.lines();
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].dump(), R"({"t":0,"what":"key","key":7,"down":true,"type":10,"tap":1})");
  EXPECT_EQ(lines[1].dump(), R"({"t":0,"what":"wheel","units":0,"wheels":[1,-2],"flags":524288,)"
                             R"("location":[1.5,2.0],"type":22,"tap":2})");
  server_.setApplication([](const SynthesizedEvent&) {});
  server_.deliverInput();
}

using Calls = std::vector<std::string>;

void noteRefresh(std::uint32_t count, const CGRect*, void* calls) {
  static_cast<Calls*>(calls)->push_back("one " + std::to_string(count));
}

void noteRefreshOnce(std::uint32_t, const CGRect* rects, void* calls) {
  static_cast<Calls*>(calls)->push_back("once at " + std::to_string(rects[0].origin.x));
  CGUnregisterScreenRefreshCallback(noteRefreshOnce, calls);
  CGUnregisterScreenRefreshCallback(noteRefresh, calls);
}

TEST_F(WindowServerWindow, ReportsWhatWasRedrawnToEachCallback) {
  Calls calls;
  Calls others;
  CGRegisterScreenRefreshCallback(noteRefreshOnce, &calls);
  CGRegisterScreenRefreshCallback(noteRefresh, &calls);
  CGRegisterScreenRefreshCallback(noteRefresh, &others);
  const CGRect rect = {{3, 4}, {5, 6}};
  server_.refresh({rect, rect});
  EXPECT_EQ(calls, (Calls{"once at 3.000000", "one 2"})) << "removed with effect from the next one";
  server_.refresh({rect});
  EXPECT_EQ(calls.size(), 2U);
  EXPECT_EQ(others, (Calls{"one 2", "one 1"}));
  CGUnregisterScreenRefreshCallback(noteRefresh, &others);
  server_.refresh({rect});
  EXPECT_EQ(others.size(), 2U);
}

}  // namespace
