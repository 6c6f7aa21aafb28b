// The whole window without a screen and with a clock of its own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <sstream>

#include "mrvsim/live/Loop.h"
#include "mrvsim/live/Window.h"
#include "tests/mrvsim/live/Screenless.h"
#include "tests/support/Process.h"

namespace {

using namespace simulator::live;
using simulator::Json;
using simulator::jsonOf;
using testing_support::readFile;

class ScriptedEvents : public EventSource {
 public:
  bool next(SDL_Event& event) override {
    if (events_.empty()) return false;
    event = events_.front();
    events_.pop_front();
    return true;
  }

  void add(const SDL_Event& event) { events_.push_back(event); }

 private:
  std::deque<SDL_Event> events_;
};

class LiveWindow : public testing::Test {
 protected:
  LiveWindow() { driver_.start(clock_.now()); }

  ~LiveWindow() override { driver_.finish(); }

  void show(std::uint64_t frames) { runLoop(driver_, window_, clock_, events_, {frames, true}); }

  void key(SDL_Scancode code, bool down) {
    SDL_Event event = {};
    event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.keysym.scancode = code;
    events_.add(event);
  }

  void moveMouse(int x, int y) {
    SDL_Event event = {};
    event.type = SDL_MOUSEMOTION;
    event.motion.x = x;
    event.motion.y = y;
    events_.add(event);
  }

  void mouseButton(int x, int y, bool down, Uint8 button = SDL_BUTTON_LEFT) {
    SDL_Event event = {};
    event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    event.button.button = button;
    event.button.x = x;
    event.button.y = y;
    events_.add(event);
  }

  /// Where a control is, from its left edge so many pixels; the middle of its height.
  std::pair<int, int> placeOf(const std::string& name, int fromLeft = -1) {
    std::istringstream lines(readFile(folder_.file("status")));
    std::pair<int, int> place;
    for (std::string text; std::getline(lines, text);) {
      const Json line = jsonOf(text);
      if (line.value("place", "") != name) continue;
      const Json& at = line["at"];
      const int width = at[2];
      place = {at[0].get<int>() + (fromLeft < 0 ? width / 2 : fromLeft),
               at[1].get<int>() + at[3].get<int>() / 2};
    }
    return place;
  }

  /// Presses the mouse on a control and lets it go.
  void press(const std::string& name) {
    const auto [x, y] = placeOf(name);
    moveMouse(x, y);
    show(2);
    mouseButton(x, y, true);
    mouseButton(x, y, false);
    show(3);
  }

  /// The steps that were taken, each as its text without the time.
  std::vector<std::string> steps() {
    std::istringstream lines(readFile(folder_.file("status")));
    std::vector<std::string> steps;
    for (std::string text; std::getline(lines, text);) {
      Json line = jsonOf(text);
      if (!line.contains("step")) continue;
      line["step"].erase("at");
      steps.push_back(line["step"].dump());
    }
    return steps;
  }

  const Seen& seen() const { return driver_.seen(); }

  testing_support::TemporaryFolder folder_;
  Session session_{{MODULE, FRAMEWORK}, 10};  // before SDL has threads
  testing_support::Screenless sdl_;
  Recording recording_{"", "", {}};
  StatusLines status_{folder_.file("status")};
  Driver driver_{session_, recording_, liveSetup(), std::nullopt, false};
  Window window_{driver_, status_, AxisMaps(), folder_.file("devices.json")};
  SteppedClock clock_;
  ScriptedEvents events_;
};

TEST_F(LiveWindow, ZoomsWhileWIsHeld) {
  show(5);
  key(SDL_SCANCODE_W, true);
  show(30);
  EXPECT_GT(seen().host.zoom, 1.3);
  key(SDL_SCANCODE_W, false);
  show(30);
  EXPECT_EQ(driver_.lastSample(), Sample{});
}

TEST_F(LiveWindow, ShowsSixtyPicturesForASecond) {
  const std::int64_t before = clock_.now();
  show(61);
  EXPECT_NEAR(static_cast<double>(clock_.now() - before), 1e9, 2e7);
}

TEST_F(LiveWindow, PassesTheMouseAndItsClicksOnToTheHost) {
  show(3);
  moveMouse(500, 300);
  mouseButton(500, 300, true);
  moveMouse(520, 300);
  show(2);
  mouseButton(520, 300, false);
  show(2);
  const std::vector<std::string> taken = steps();
  EXPECT_THAT(taken, testing::Contains(R"({"click":"down"})"));
  EXPECT_THAT(taken, testing::Contains(R"({"click":"dragged"})"));
  EXPECT_THAT(taken, testing::Contains(R"({"click":"up"})"));
  EXPECT_THAT(taken, testing::Contains(testing::StartsWith(R"({"mouse":[)")));
  EXPECT_EQ(seen().counts[kClickPassed], 3U);
}

TEST_F(LiveWindow, ShowsThatAClickIsHeldBackDuringAPan) {
  show(3);
  key(SDL_SCANCODE_RIGHT, true);
  show(10);
  mouseButton(500, 300, true);
  mouseButton(500, 300, false);
  show(2);
  EXPECT_EQ(seen().counts[kClickHeldBack], 2U);
  EXPECT_EQ(seen().counts[kClickPassed], 0U);
}

TEST_F(LiveWindow, CallsThePlugInByItsButtons) {
  show(5);
  press("Shutdown");
  EXPECT_FALSE(seen().host.isConnected);
  press("Startup");
  EXPECT_TRUE(seen().host.isConnected);
  EXPECT_THAT(steps(), testing::Contains(R"({"call":["SP Interface","Shutdown"]})"));
  // A click on the panels is not the host's.
  EXPECT_THAT(steps(), testing::Not(testing::Contains(testing::HasSubstr("click"))));
}

TEST_F(LiveWindow, ChangesTheHostByItsSlidersAndBoxes) {
  show(5);
  const auto [left, y] = placeOf("Redraw after", 10);
  mouseButton(left, y, true);
  show(2);
  moveMouse(left + 60, y);
  show(2);
  mouseButton(left + 60, y, false);
  show(2);
  ASSERT_TRUE(driver_.setup().host.redrawDelay.has_value());
  EXPECT_GT(*driver_.setup().host.redrawDelay, 60);
  press("Reacts to ticks");
  EXPECT_EQ(driver_.setup().host.redrawDelay, std::nullopt);
  press("Window");
  EXPECT_FALSE(seen().host.hasWindow);
  press("Wheel zooms");
  press("Host in front");
  EXPECT_THAT(steps(),
              testing::IsSupersetOf({R"({"redrawDelay":null})", R"({"window":null})",
                                     R"({"zoomWithScrollWheel":true})", R"({"active":false})"}));
}

TEST_F(LiveWindow, ChoosesToolsAndInjectsFaults) {
  show(5);
  press("Tool");
  show(2);
  press("Tool: bucketTool");
  press("Inject");
  EXPECT_THAT(steps(),
              testing::IsSupersetOf({R"({"tool":"bucketTool"})",
                                     R"({"fail":{"procedure":"ActionControl.Get","error":-1715,)"
                                     R"("after":0,"times":1}})"}));
}

TEST_F(LiveWindow, SendsNothingOfAnUnpluggedDevice) {
  show(5);
  press("Device plugged in");
  key(SDL_SCANCODE_W, true);
  show(20);
  EXPECT_EQ(seen().host.zoom, 1);
}

TEST_F(LiveWindow, PullsTheCapByItsPicture) {
  show(5);
  const auto [x, y] = placeOf("Cap");
  moveMouse(x, y);
  show(2);
  mouseButton(x, y, true, SDL_BUTTON_RIGHT);
  show(2);
  moveMouse(x, y - 60);
  show(20);
  EXPECT_GT(driver_.hand().deflection()[kPush], 0.5);
  EXPECT_GT(seen().host.zoom, 1.2);
  mouseButton(x, y - 60, false, SDL_BUTTON_RIGHT);
  show(30);
  EXPECT_EQ(driver_.hand().deflection(), Deflection{});
}

TEST_F(LiveWindow, FollowsAJoystick) {
  const int index = SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_UNKNOWN, 6, 2, 0);
  ASSERT_GE(index, 0);
  SystemEvents system;
  runLoop(driver_, window_, clock_, system, {3, true});
  SDL_Joystick* const joystick = SDL_JoystickFromInstanceID(SDL_JoystickGetDeviceInstanceID(index));
  SDL_JoystickSetVirtualAxis(joystick, 1, -32767);
  SDL_JoystickSetVirtualButton(joystick, 1, 1);
  runLoop(driver_, window_, clock_, system, {20, true});
  EXPECT_LT(seen().host.zoom, 1);
  EXPECT_THAT(steps(), testing::Contains(testing::HasSubstr(R"("command":2,"value":1)")));
}

TEST_F(LiveWindow, ClosesWhenItIsAskedTo) {
  SDL_Event event = {};
  event.type = SDL_QUIT;
  events_.add(event);
  show(1000000);
  EXPECT_TRUE(window_.isClosed());
}

TEST_F(LiveWindow, HasAPictureOfWhatItShows) {
  show(3);
  const std::string before = window_.picture();
  EXPECT_THAT(before, testing::StartsWith("\x89PNG"));
  key(SDL_SCANCODE_W, true);
  show(20);
  EXPECT_NE(window_.picture(), before);
}

}  // namespace
