// The wait for the host's redraw, which paces the ticks: samples are dropped from a tick until the
// host has redrawn.
#include <algorithm>
#include <cstdint>

#include "hostutil/Truncate.h"
#include "hostwindow/HostWindow.h"
#include "navigate/Navigate2D.h"

namespace {

/// The value of `m_refreshWait` at which the next drop ends the wait.
constexpr std::int16_t kLongestWait = 51;

/// Quirk: y of `rect` grows downward from the screen's top, y of `bounds` upward from its bottom,
/// and they are compared as they stand. The host's redraw of a window that lies wholly in the upper
/// or the lower half of the screen is therefore not seen, and the longest wait paces its ticks.
bool overlaps(const CGRect& rect, const Rect& bounds) {
  const std::int32_t left = truncateToInt32(rect.origin.x);
  const std::int32_t right = truncateToInt32(rect.origin.x + rect.size.width);
  const std::int32_t bottom = truncateToInt32(rect.origin.y);
  const std::int32_t top = truncateToInt32(rect.origin.y + rect.size.height);
  return left < bounds.right && bounds.left < right && bottom < bounds.bottom && bounds.top < top;
}

}  // namespace

bool Navigate2D::takeSample() {
  if (m_refreshWait == 0 && !isPhotoshopWindowUpdatePending()) return true;
  m_refreshWait =
      m_refreshWait < kLongestWait ? static_cast<std::int16_t>(m_refreshWait + 1) : std::int16_t{0};
  return false;
}

void Navigate2D::beginRedrawWait() {
  if (m_refreshWait <= 0) m_refreshWait = 1;
}

void screenRefreshCallback(std::uint32_t count, const CGRect* rects, void* userInfo) {
  auto& navigator = *static_cast<Navigate2D*>(userInfo);
  if (getMainPhotoshopWindow() == nullptr || navigator.m_refreshWait <= 0) return;
  Rect bounds;
  getMainPhotoshopWindowBounds(&bounds);
  const auto inWindow = [&](const CGRect& rect) { return overlaps(rect, bounds); };
  if (std::any_of(rects, rects + count, inWindow)) navigator.m_refreshWait = 0;
}
