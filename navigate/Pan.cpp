#include <cstdint>
#include <cstdlib>

#include "hostwindow/HostWindow.h"
#include "navigate/Navigate2D.h"
#include "navigate/PanStep.h"

namespace {

constexpr int kPanThreshold = 6;
constexpr int kTickPixels = 8;

struct Wheel {
  int step;
  UInt16 axis;
  UInt32 modifiers;
};

/// The wheel and modifiers that make the host scroll along the displacement. A host that zooms with
/// the wheel scrolls vertically with option held, horizontally with option and command held.
Wheel wheelFor(Point start, Point end, bool zoomWithScrollWheel) {
  if (start.h == end.h) {
    return {start.v - end.v, kVerticalWheel, zoomWithScrollWheel ? UInt32{optionKey} : 0};
  }
  const int step = start.h - end.h;
  if (zoomWithScrollWheel) return {step, kVerticalWheel, optionKey | cmdKey};
  return {step, kHorizontalWheel, 0};
}

}  // namespace

void Navigate2D::PanEvent(short dx, short dy) {
  if (dx == 0 && dy == 0) {
    RemoveMouseDownHandler();
  } else {
    InstallMouseDownHandler();
  }
  if (takeSample()) SimulateScrollbarPan(dx, dy);
}

void Navigate2D::SimulateScrollbarPan(int dx, int dy) {
  if (getMainPhotoshopWindow() == nullptr) return;
  const bool horizontal = std::abs(dx) > std::abs(dy);
  const Point start = {.v = kPanOrigin, .h = kPanOrigin};
  Point end = start;
  (horizontal ? end.h : end.v) = panStepEnd(horizontal ? dx : dy);
  SimulateScrollWheelPanEvent(nullptr, start, end);
}

void Navigate2D::SimulateScrollWheelPanEvent(WindowRef, Point start, Point end) {
  static std::int16_t panAccumulator = 0;
  const Wheel wheel = wheelFor(start, end, m_zoomWithScrollWheel);
  panAccumulator = static_cast<std::int16_t>(panAccumulator + wheel.step);
  if (std::abs(panAccumulator) < kPanThreshold) return;
  const int direction = panAccumulator > 0 ? 1 : -1;
  panAccumulator = 0;
  postTick(wheel.axis, direction * kTickPixels, wheel.modifiers);
}
