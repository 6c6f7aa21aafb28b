// The navigator on a simulated machine, and the log lines of the input that it synthesizes.
#pragma once

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "navigate/Navigate2D.h"
#include "tests/support/Machine.h"

namespace testing_support {

// The modifiers of a wheel tick, as its line has them.
constexpr unsigned kOptionFlag = 0x80000;
constexpr unsigned kCommandFlag = 0x100000;

inline simulator::Json keyLine(int key, bool down) {
  return {{"t", 0},       {"what", "key"},          {"key", key},
          {"down", down}, {"type", down ? 10 : 11}, {"tap", 1}};
}

inline simulator::Json wheelLine(const std::vector<int>& wheels, unsigned flags, double x,
                                 double y) {
  return {{"t", 0},         {"what", "wheel"},    {"units", 0}, {"wheels", wheels},
          {"flags", flags}, {"location", {x, y}}, {"type", 22}, {"tap", 1}};
}

/// The main window's content is 800 by 600 at (100, 50) and the mouse is at (500, 350), y growing
/// upward, on a screen of height 900. A wheel tick at the mouse is logged at (500, 550), y growing
/// downward.
class NavigatorFixture : public testing::Test {
 protected:
  NavigatorFixture() {
    simulator::writeHostFiles({}, machine.preferences());
    navigator = &Navigate2D::Instance();
    machine.drain();
  }
  ~NavigatorFixture() override { navigator->RemoveMouseDownHandler(); }

  /// The key and wheel lines since the last call.
  std::vector<simulator::Json> input() {
    std::vector<simulator::Json> lines = machine.drain();
    std::erase_if(lines, [](const simulator::Json& line) {
      return line["what"] != "key" && line["what"] != "wheel";
    });
    return lines;
  }

  /// The wheel lines since the last call; drops the key lines.
  std::vector<simulator::Json> wheels() {
    std::vector<simulator::Json> lines = input();
    std::erase_if(lines, [](const simulator::Json& line) { return line["what"] != "wheel"; });
    return lines;
  }

  Machine machine;
  Navigate2D* navigator = nullptr;
  simulator::WindowServer& server = simulator::theWindowServer();
};

using Lines = std::vector<simulator::Json>;

}  // namespace testing_support
