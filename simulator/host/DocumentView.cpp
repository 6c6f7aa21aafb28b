#include "simulator/host/DocumentView.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <string>

#include "simulator/base/Log.h"
#include "simulator/host/Host.h"
#include "simulator/macos/EventManager.h"
#include "simulator/macos/TextInput.h"
#include "simulator/macos/WindowServer.h"

namespace simulator {

namespace {

constexpr double kZoomStep = 1.1;
constexpr double kSmallestZoom = 0.01;
constexpr double kLargestZoom = 32.0;
constexpr double kSmallestByShortcut = 1.0;
constexpr double kLargestByShortcut = 2500.0;

/// The virtual keys of a layout's brush shortcuts. Layouts that are not listed use those of the US
/// layout.
struct BracketKeys {
  const char* layout;
  std::uint32_t smaller, larger;
};
constexpr std::array kBracketKeys = {BracketKeys{"com.apple.keylayout.German", 41, 42},
                                     BracketKeys{"com.apple.keylayout.French", 30, 50}};
constexpr BracketKeys kUSBracketKeys = {"com.apple.keylayout.US", 33, 30};

const BracketKeys& bracketKeys() {
  const auto* known =
      std::find_if(kBracketKeys.begin(), kBracketKeys.end(),
                   [](const BracketKeys& keys) { return keyboardLayout() == keys.layout; });
  return known != kBracketKeys.end() ? *known : kUSBracketKeys;
}

/// The step of the brush shortcuts at diameters up to `limit`.
struct BrushStep {
  double limit, step;
};
constexpr std::array kBrushSteps = {BrushStep{10, 1}, BrushStep{100, 10}, BrushStep{200, 25},
                                    BrushStep{300, 50}, BrushStep{kLargestByShortcut, 100}};

double stepAt(double diameter, bool larger) {
  // At a limit, growing uses the next range's step and shrinking the step of the range below.
  const auto* step = std::find_if(kBrushSteps.begin(), kBrushSteps.end(), [&](const BrushStep& s) {
    return larger ? diameter < s.limit : diameter <= s.limit;
  });
  return step != kBrushSteps.end() ? step->step : kBrushSteps.back().step;
}

CGPoint pointerInContent(CGPoint location) {
  const WindowServer& server = theWindowServer();
  const CGPoint corner = server.onDisplay(server.window().content).origin;
  return {location.x - corner.x, location.y - corner.y};
}

std::uint32_t keyCodeOf(EventRef event) {
  std::uint32_t code = 0;
  theEventManager().getParameter(event, kEventParamKeyCode, typeUInt32, nullptr,
                                 std::as_writable_bytes(std::span(&code, 1)), nullptr);
  return code;
}

}  // namespace

double steppedDiameter(double diameter, bool larger) {
  const double step = stepAt(diameter, larger);
  // A diameter that is not a multiple of the step goes to the next multiple.
  const double next =
      larger ? (std::floor(diameter / step) + 1) * step : (std::ceil(diameter / step) - 1) * step;
  return std::clamp(next, kSmallestByShortcut, kLargestByShortcut);
}

void DocumentView::react(const SynthesizedEvent& event) {
  const auto* wheel = std::get_if<WheelEvent>(&event.input);
  if (wheel == nullptr || !redrawDelay) return;
  const bool option = (event.flags & kCGEventFlagMaskAlternate) != 0;
  const bool command = (event.flags & kCGEventFlagMaskCommand) != 0;
  const std::int32_t vertical = wheel->wheels[0];
  const std::int32_t horizontal = wheel->wheels.size() > 1 ? wheel->wheels[1] : 0;
  if (zoomWithScrollWheel != option) {
    if (vertical != 0) {
      zoomBy(vertical > 0 ? kZoomStep : 1 / kZoomStep, pointerInContent(event.location));
    }
  } else {
    origin.x += horizontal + (command ? vertical : 0);
    origin.y += command ? 0 : vertical;
  }
  reacted();
}

void DocumentView::react(EventRef event) {
  const bool pressed =
      GetEventClass(event) == kEventClassKeyboard && GetEventKind(event) == kEventRawKeyDown;
  if (!pressed || !redrawDelay) return;
  const std::uint32_t key = keyCodeOf(event);
  const BracketKeys& keys = bracketKeys();
  const auto diameter = theHost().brush();
  if (!diameter || (key != keys.smaller && key != keys.larger)) return;
  theHost().setBrush(steppedDiameter(*diameter, key == keys.larger));
  reacted();
}

void DocumentView::redraw() {
  redrawDue_.reset();
  WindowServer& server = theWindowServer();
  server.window().viewsNeedDisplay = false;
  const std::vector<CGRect> redrawn = {server.onDisplay(server.window().content)};
  server.refresh(redrawn);
  reported(redrawn);
}

void DocumentView::close() {
  redrawDue_.reset();
  theWindowServer().closeWindow();
}

void DocumentView::zoomBy(double factor, CGPoint pointer) {
  const double before = zoom;
  zoom = std::clamp(zoom * factor, kSmallestZoom, kLargestZoom);
  const double ratio = zoom / before;
  origin = {pointer.x + (origin.x - pointer.x) * ratio, pointer.y + (origin.y - pointer.y) * ratio};
}

void DocumentView::reacted() {
  if (theWindowServer().window().isOpen) {
    if (!redrawDue_) redrawDue_ = static_cast<double>(theLog().now()) + *redrawDelay;
    theWindowServer().window().viewsNeedDisplay = true;
  }
  const auto diameter = theHost().brush();
  theLog().write("view", {{"zoom", zoom},
                          {"origin", jsonList(std::array{origin.x, origin.y})},
                          {"brush", diameter ? JsonValue(*diameter) : nullptr}});
}

DocumentView& theDocumentView() {
  static DocumentView& view = *new DocumentView;
  return view;
}

}  // namespace simulator
