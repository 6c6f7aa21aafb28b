// The synthesized scroll wheel: the position of a tick and the modifier keys held during it.
#include <ApplicationServices/ApplicationServices.h>

#include "hostwindow/HostWindow.h"
#include "hostwindow/ScreenGeometry.h"
#include "navigate/Navigate2D.h"

namespace {

constexpr CGKeyCode kOptionKeyCode = 58;
constexpr CGKeyCode kCommandKeyCode = 55;

void postAndRelease(CGEventRef event) {
  CGEventPost(kCGSessionEventTap, event);
  CFRelease(event);
}

void postKey(CGKeyCode key, bool down) {
  const CGEventRef event = CGEventCreateKeyboardEvent(nullptr, key, down);
  if (event == nullptr) return;
  CGEventSetType(event, down ? kCGEventKeyDown : kCGEventKeyUp);
  postAndRelease(event);
}

CGEventRef createWheelEvent(UInt16 axis, SInt32 delta) {
  if (axis == kVerticalWheel) {
    return CGEventCreateScrollWheelEvent(nullptr, kCGScrollEventUnitPixel, 1, delta);
  }
  return CGEventCreateScrollWheelEvent(nullptr, kCGScrollEventUnitPixel, 2, 0, delta);
}

void postWheel(UInt16 axis, SInt32 delta, Point where, CGEventFlags flags) {
  const CGEventRef event = createWheelEvent(axis, delta);
  if (event == nullptr) return;
  if (flags != 0) CGEventSetFlags(event, flags);
  convertNSMousePtToCG(&where);
  CGEventSetLocation(event, {static_cast<CGFloat>(where.h), static_cast<CGFloat>(where.v)});
  CGEventSetType(event, kCGEventScrollWheel);
  postAndRelease(event);
}

}  // namespace

int Navigate2D::SimulateWheelMovedEvent(WindowRef, UInt16 axis, SInt32 delta, Point where,
                                        UInt32 modifiers) {
  const bool option = (modifiers & optionKey) != 0;
  const bool command = (modifiers & cmdKey) != 0;
  const CGEventFlags flags = (command ? CGEventFlags{kCGEventFlagMaskCommand} : 0) |
                             (option ? CGEventFlags{kCGEventFlagMaskAlternate} : 0);
  if (option) postKey(kOptionKeyCode, true);
  if (command) postKey(kCommandKeyCode, true);
  postWheel(axis, delta, where, flags);
  if (command) postKey(kCommandKeyCode, false);
  if (option) postKey(kOptionKeyCode, false);
  return 0;
}

int Navigate2D::SimulateMouseDragEvent(WindowRef, Point, Point) { return 0; }

int Navigate2D::GetSbarControl(WindowRef, SInt32, ControlRef*) { return 0; }

void Navigate2D::postTick(UInt16 axis, SInt32 delta, UInt32 modifiers) {
  Rect bounds;
  Point mouse;
  getMainPhotoshopWindowBounds(&bounds);
  getCurrentMouseLocation(&mouse);
  Point where = placeInside(bounds, mouse);
  beginRedrawWait();
  if (where.h >= bounds.right) {
    where.h = middle(bounds.left, bounds.right);
    if (bounds.left >= where.h) return;
  }
  SimulateWheelMovedEvent(nullptr, axis, delta, where, modifiers);
}
