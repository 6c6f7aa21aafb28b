// `mrvsim live` on an X server, with keys and a mouse that are pressed and moved by xdotool.
// Nothing here waits for a time: the program says on a pipe what goes on in its window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <X11/Xlib.h>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>

#include "simulator/base/Json.h"
#include "tests/support/Process.h"
#include "tests/support/XServer.h"

namespace {

using simulator::Json;
using simulator::jsonOf;
using testing_support::Child;
using testing_support::readFile;

class LiveOnAScreen : public testing::Test {
 protected:
  LiveOnAScreen() {
    setenv("DISPLAY", server_.display().c_str(), 1);
    setenv("XDG_CONFIG_HOME", folder_.file("config").c_str(), 1);
    setenv("TMPDIR", folder_.file("").c_str(), 1);
    for (const char* const name : {"SDL_RENDER_DRIVER", "SDL_VIDEODRIVER", "WAYLAND_DISPLAY"}) {
      unsetenv(name);
    }
    // The libraries of the display keep memory to the end. That the program itself keeps none is
    // seen without a display.
    setenv("LSAN_OPTIONS", "detect_leaks=0", 1);
  }

  /// Starts the program and waits until its window is shown and the plug-in is connected.
  void open(const std::vector<std::string>& options, bool isConnected = true) {
    const std::string pipe = folder_.file("status");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::vector<std::string> command = {MRVSIM,     "live",
                                        "--status", pipe,
                                        "--record", folder_.file("r.json"),
                                        "--log",    folder_.file("log")};
    command.insert(command.end(), options.begin(), options.end());
    const std::string errors = folder_.file("errors");
    program_ = std::make_unique<Child>(SIGKILL, [&] {
      if (std::freopen(errors.c_str(), "w", stderr) == nullptr) _exit(126);
      std::vector<char*> arguments;
      for (std::string& word : command) arguments.push_back(word.data());
      arguments.push_back(nullptr);
      execv(MRVSIM, arguments.data());
    });
    status_.open(pipe);
    waitFor([](const Json& line) { return line.contains("drawn"); });
    if (isConnected && !isConnected_) {
      waitFor([](const Json& line) { return line.contains("connected"); });
    }
    window_ = outputOf({"search", "--sync", "--name", "MrvPhotoshop"});
    outputOf({"windowfocus", "--sync", window_});
  }

  static std::string outputOf(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), MRV_XDOTOOL);
    std::string output = testing_support::run(arguments).output;
    while (!output.empty() && output.back() == '\n') output.pop_back();
    return output;
  }

  /// Reads what the program says until this is true; fails at the program's end.
  void waitFor(const std::function<bool(const Json&)>& isIt) {
    for (std::string text; std::getline(status_, text);) {
      const Json line = jsonOf(text);
      if (line.contains("place")) places_[line["place"]] = line["at"];
      if (line.contains("connected")) isConnected_ = line["connected"];
      if (isIt(line)) return;
    }
    FAIL() << "the program has ended: " << readFile(folder_.file("errors"));
  }

  void waitForStep(const std::function<bool(const Json&)>& isIt) {
    waitFor([&](const Json& line) { return line.contains("step") && isIt(line["step"]); });
  }

  void waitForZoom(const std::function<bool(double)>& isIt) {
    waitFor([&](const Json& line) { return line.contains("view") && isIt(line["view"]["zoom"]); });
  }

  void moveMouse(int x, int y) const {
    outputOf({"mousemove", "--window", window_, std::to_string(x), std::to_string(y)});
  }

  /// Moves the mouse to a control, so many pixels from its left edge.
  void moveTo(const std::string& name, int fromLeft) {
    const Json& at = places_.at(name);
    moveMouse(at[0].get<int>() + fromLeft, at[1].get<int>() + at[3].get<int>() / 2);
  }

  /// Asks the window to close, as a window manager does.
  void close() const {
    Display* const display = XOpenDisplay(nullptr);
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = std::stoul(window_);
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    XSendEvent(display, event.xclient.window, False, NoEventMask, &event);
    XCloseDisplay(display);
  }

  void expectThatTheRecordingPlaysToTheLog(const std::vector<std::string>& options = {}) {
    std::vector<std::string> command = {MRVSIM, "play", folder_.file("r.json"), "--log",
                                        folder_.file("played")};
    command.insert(command.end(), options.begin(), options.end());
    const auto played = testing_support::run(command);
    EXPECT_EQ(played.status, 0) << played.errors;
    EXPECT_FALSE(readFile(folder_.file("log")).empty());
    EXPECT_EQ(readFile(folder_.file("played")), readFile(folder_.file("log")));
  }

  testing_support::TemporaryFolder folder_;
  testing_support::XServer server_{MRV_XVFB, "1600x1000x24"};
  std::unique_ptr<Child> program_;
  std::ifstream status_;
  std::map<std::string, Json> places_;
  std::string window_;
  bool isConnected_ = false;
};

TEST_F(LiveOnAScreen, IsDrivenByKeysMouseAndSlidersAndPlaysAgain) {
  open({});
  outputOf({"keydown", "w"});
  waitForZoom([](double zoom) { return zoom > 1.2; });
  outputOf({"keyup", "w"});
  waitForStep([](const Json& step) {
    return step.contains("axes") && step["axes"] == Json({0, 0, 0, 0, 0, 0});
  });
  moveTo("Redraw after", 20);
  outputOf({"mousedown", "1"});
  waitForStep([](const Json& step) { return step.contains("redrawDelay"); });
  moveTo("Redraw after", 60);
  waitForStep(
      [](const Json& step) { return step.contains("redrawDelay") && step["redrawDelay"] > 100; });
  outputOf({"mouseup", "1"});
  moveMouse(500, 300);
  waitForStep([](const Json& step) { return step.contains("mouse"); });
  outputOf({"click", "1"});
  waitForStep([](const Json& step) { return step.contains("click") && step["click"] == "up"; });
  moveTo("Shutdown", 20);
  outputOf({"click", "1"});
  waitFor([](const Json& line) { return line.contains("connected"); });
  EXPECT_FALSE(isConnected_);
  close();
  EXPECT_EQ(program_->wait(), 0) << readFile(folder_.file("errors"));
  expectThatTheRecordingPlaysToTheLog();
}

TEST_F(LiveOnAScreen, KeepsItsRecordingWhenItIsInterrupted) {
  open({});
  outputOf({"keydown", "d"});
  waitForStep([](const Json& step) { return step.contains("axes"); });
  program_->interrupt(SIGINT);
  EXPECT_EQ(program_->wait(), 130) << readFile(folder_.file("errors"));
  EXPECT_EQ(readFile(folder_.file("errors")), "");
  expectThatTheRecordingPlaysToTheLog();
}

TEST_F(LiveOnAScreen, LeavesNothingBehindWhenItIsKilled) {
  open({});
  const auto isLeft = [&] {
    for (const auto& entry : std::filesystem::directory_iterator(folder_.file(""))) {
      if (entry.path().filename().string().starts_with("mrvsim-")) return true;
    }
    return false;
  };
  EXPECT_TRUE(isLeft());
  program_->interrupt(SIGKILL);
  program_->wait();
  // The pipe's end is that of the last process that could write to it.
  for (std::string line; std::getline(status_, line);) {
  }
  while (isLeft()) {
  }
  EXPECT_FALSE(std::filesystem::exists(folder_.file("r.json")));
}

TEST_F(LiveOnAScreen, ShowsThatAPlugInCrashedAndGoesOn) {
  setenv("MISBEHAVE", "crash", 1);
  open({"--plugin", MISBEHAVES}, false);
  waitFor([](const Json& line) { return line.contains("broke"); });
  moveMouse(500, 300);
  moveMouse(510, 300);
  waitFor([](const Json& line) { return line.contains("drawn"); });
  close();
  EXPECT_EQ(program_->wait(), 4);
  EXPECT_THAT(readFile(folder_.file("errors")),
              testing::StartsWith("mrvsim: /steps/0 (call): the plug-in crashed: SIGSEGV"));
}

}  // namespace
