#include "hostwindow/ScreenGeometry.h"

#include "hostutil/Truncate.h"

short pixel(double coordinate) { return static_cast<short>(truncateToInt32(coordinate)); }

Rect pixelRect(const CGRect& rect) {
  return {.top = pixel(rect.origin.y),
          .left = pixel(rect.origin.x),
          .bottom = pixel(rect.origin.y + rect.size.height),
          .right = pixel(rect.origin.x + rect.size.width)};
}

Point placeInside(const Rect& bounds, Point mouse) {
  const bool inside = bounds.left <= mouse.h && mouse.h <= bounds.right && bounds.top <= mouse.v &&
                      mouse.v <= bounds.bottom;
  if (inside) return mouse;
  return {.v = middle(bounds.top, bounds.bottom), .h = middle(bounds.left, bounds.right)};
}

short middle(short low, short high) {
  const int sum = low + high;
  return static_cast<short>(sum / 2);
}
