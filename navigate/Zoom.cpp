#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "hostwindow/HostWindow.h"
#include "navigate/Navigate2D.h"

namespace {

constexpr int kZoomThreshold = 11;
constexpr char kMaximumMagnification[] = "@ 1600";

/// The window title, which shows the magnification. Reading it is not implemented, so it is empty
/// and the check for the maximum magnification never stops a tick.
constexpr char kWindowTitle[] = "";

bool isAtMaximum(int direction) {
  // Branch never true: the title is empty.
  return direction > 0 && std::strstr(kWindowTitle, kMaximumMagnification) != nullptr;
}

}  // namespace

void Navigate2D::ZoomEvent(short z) {
  if (takeSample()) SimulateScrollWheelZoom(z);
}

void Navigate2D::SimulateScrollWheelZoom(int delta) {
  static std::int16_t zoomAccumulator = 0;
  if (getMainPhotoshopWindow() == nullptr) return;
  // The low 16 bits of the delta are added, and the sum wraps.
  zoomAccumulator = static_cast<std::int16_t>(zoomAccumulator + static_cast<std::int16_t>(delta));
  if (std::abs(zoomAccumulator) < kZoomThreshold) return;
  const int direction = zoomAccumulator > 0 ? 1 : -1;
  // The excess over the threshold is not carried over.
  zoomAccumulator = 0;
  // Branch never true: the title is empty.
  if (isAtMaximum(direction)) return;
  postTick(kVerticalWheel, direction, m_zoomWithScrollWheel ? 0 : optionKey);
}
