// A scenario: the simulated Mac, host and device, and the steps to play.
#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "simulator/base/Faults.h"

namespace simulator {

/// Rectangles in screen coordinates, y growing upward; sizes are not negative.
struct WindowSetup {
  CGRect frame = {{100, 50}, {800, 622}};
  CGRect content = {{100, 50}, {800, 600}};
};

/// nullopt: there is no main window.
using MainWindow = std::optional<WindowSetup>;

using HostVersion = std::optional<std::pair<int, int>>;

struct HostSetup {
  HostVersion version = std::pair(12, 1);  ///< major and minor; nullopt: the host reports none
  std::string tool = "paintbrushTool";     ///< string ID
  std::optional<double> brush = 13.0;      ///< diameter; nullopt: the tool has no brush options
  std::optional<bool> zoomWithScrollWheel = false;  ///< nullopt: there is no preferences file
  MainWindow window = WindowSetup{};
  double screenHeight = 900;
  std::optional<double> redrawDelay;  ///< milliseconds; nullopt: no reaction by itself
  std::vector<std::string> actions;   ///< action files; empty: the model's own actions
};

/// A device message; without `client` it goes to the registered client.
struct DeviceMessage {
  std::uint32_t type;
  std::optional<std::uint16_t> client;
  std::uint16_t command = 3;
  std::uint32_t value = 0;
  std::array<std::int16_t, 6> axes = {};
  std::uint16_t button = 0;
};

enum class Click { kDown = 1, kUp = 2, kMoved = 5, kDragged = 6 };

// One type for each kind of step.
struct CallStep {
  std::string caller, selector;
};
struct MessageStep {
  DeviceMessage message;
};
struct ActiveStep {
  bool active;
};
struct WindowPendingStep {
  bool pending;
};
struct ToolbarPendingStep {
  bool pending;
};
struct RefreshStep {
  std::vector<CGRect> rects;
};
struct MouseStep {
  CGPoint place;
};
struct ClickStep {
  Click click;
};
struct ModifiersStep {
  std::uint32_t modifiers;
};
struct ToolStep {
  std::string tool;
};
struct BrushStep {
  std::optional<double> diameter;
};
struct WindowStep {
  MainWindow window;
};
struct CloseWindowStep {};
struct LayoutStep {
  std::string layout;
};
struct FailStep {
  FaultRule rule;
};
struct RedrawDelayStep {
  std::optional<double> milliseconds;  ///< as `HostSetup::redrawDelay`
};
struct PreferenceStep {
  bool zoomWithScrollWheel;
};

using StepAction =
    std::variant<CallStep, MessageStep, ActiveStep, WindowPendingStep, ToolbarPendingStep,
                 RefreshStep, MouseStep, ClickStep, ModifiersStep, ToolStep, BrushStep, WindowStep,
                 CloseWindowStep, LayoutStep, FailStep, RedrawDelayStep, PreferenceStep>;

struct Step {
  std::int64_t at = 0;  ///< virtual milliseconds from the start, not less than the previous step's
  StepAction action;
};

struct Scenario {
  HostSetup host;
  std::string layout = "com.apple.keylayout.US";
  CGPoint mouse = {500, 350};
  std::uint32_t modifiers = 0;
  bool framework = true;
  std::vector<Step> steps;
};

}  // namespace simulator
