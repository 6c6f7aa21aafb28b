#include <cstdlib>
#include <cstring>

#include "hostwindow/HostWindow.h"
#include "navigate/Navigate2D.h"

namespace {

constexpr int kZoomThreshold = 11;
constexpr char kMaximumMagnification[] = "@ 1600";

/// The text in which a host at its maximum magnification would say so. It is never filled, so the
/// stop never holds a tick back; the check keeps its place for the day when there is a title.
constexpr char kWindowTitle[] = "";

bool isAtMaximum(int direction) {
  return direction > 0 && std::strstr(kWindowTitle, kMaximumMagnification) != nullptr;
}

}  // namespace

void Navigate2D::ZoomEvent(short z) {
  if (takeSample()) SimulateScrollWheelZoom(z);
}

void Navigate2D::SimulateScrollWheelZoom(int delta) {
  static std::int16_t zoomAccumulator = 0;
  if (getMainPhotoshopWindow() == nullptr) return;
  // In 16 bits: the delta's low ones count, and the sum wraps.
  zoomAccumulator = static_cast<std::int16_t>(zoomAccumulator + static_cast<std::int16_t>(delta));
  if (std::abs(zoomAccumulator) < kZoomThreshold) return;
  const int direction = zoomAccumulator > 0 ? 1 : -1;
  // What is beyond the threshold is dropped, not carried over.
  zoomAccumulator = 0;
  if (isAtMaximum(direction)) return;
  postTick(kVerticalWheel, direction, m_zoomWithScrollWheel ? 0 : optionKey);
}
