#include "navigate/HostWindow.h"

#include <algorithm>

#include "hostutil/Truncate.h"
#include "navigate/Navigate2D.h"
#include "navigate/ObjcMessage.h"
#include "navigate/ScreenGeometry.h"
#include "platform/FourCharCode.h"

namespace {

enum : EventParamName { kSynthesizedMarker = fourCharCode("MrVe") };

id classObject(const char* name) { return reinterpret_cast<id>(objc_getClass(name)); }

id contentView(id window) {
  static const SEL selector = sel_registerName("contentView");
  return sendMessage<id>(window, selector);
}

CGRect frameOf(id object) {
  static const SEL selector = sel_registerName("frame");
  return sendMessage<CGRect>(object, selector);
}

id screenOf(id window) {
  static const SEL selector = sel_registerName("screen");
  return sendMessage<id>(window, selector);
}

bool overlaps(const CGRect& rect, const Rect& bounds) {
  const std::int32_t left = truncateToInt32(rect.origin.x);
  const std::int32_t right = truncateToInt32(rect.origin.x + rect.size.width);
  const std::int32_t bottom = truncateToInt32(rect.origin.y);
  const std::int32_t top = truncateToInt32(rect.origin.y + rect.size.height);
  return left < bounds.right && bounds.left < right && bottom < bounds.bottom && bounds.top < top;
}

bool isClick(EventRef event) {
  const UInt32 kind = GetEventKind(event);
  return kind == kEventMouseDown || kind == kEventMouseUp;
}

bool isSynthesized(EventRef event) {
  char marker = 0;
  GetEventParameter(event, kSynthesizedMarker, typeChar, nullptr, sizeof marker, nullptr, &marker);
  return marker == 1;
}

}  // namespace

id getMainPhotoshopWindow() {
  static const id applicationClass = classObject("NSApplication");
  static const SEL sharedApplication = sel_registerName("sharedApplication");
  static const SEL mainWindow = sel_registerName("mainWindow");
  return sendMessage<id>(sendMessage<id>(applicationClass, sharedApplication), mainWindow);
}

bool isPhotoshopWindowUpdatePending() {
  static const SEL viewsNeedDisplay = sel_registerName("viewsNeedDisplay");
  return sendMessage<BOOL>(getMainPhotoshopWindow(), viewsNeedDisplay) != 0;
}

void flushPhotoshopWindow() {
  static const SEL displayIfNeeded = sel_registerName("displayIfNeeded");
  sendMessage<void>(getMainPhotoshopWindow(), displayIfNeeded);
}

void getMainPhotoshopWindowBounds(Rect* bounds) {
  static const SEL contentRectForFrameRect = sel_registerName("contentRectForFrameRect:");
  const id window = getMainPhotoshopWindow();
  *bounds = pixelRect(sendMessage<CGRect>(window, contentRectForFrameRect, frameOf(window)));
}

id mrvGetToolbarWindow(UInt32) { return getMainPhotoshopWindow(); }

bool mrvIsWindowUpdatePending(id window) {
  static const SEL needsDisplay = sel_registerName("needsDisplay");
  return sendMessage<BOOL>(contentView(window), needsDisplay) != 0;
}

int mrvInvalWindowRect(id window, const Rect* rect) {
  static const SEL setNeedsDisplayInRect = sel_registerName("setNeedsDisplayInRect:");
  static const SEL release = sel_registerName("release");
  const CGRect area = {{static_cast<CGFloat>(rect->left), static_cast<CGFloat>(rect->top)},
                       {static_cast<CGFloat>(rect->right - rect->left),
                        static_cast<CGFloat>(rect->bottom - rect->top)}};
  sendMessage<void>(contentView(window), setNeedsDisplayInRect, area);
  // The caller hands one reference over with this call.
  sendMessage<void>(window, release);
  return 0;
}

void mrvGetWindowBounds(id window, UInt16, Rect* bounds) { *bounds = pixelRect(frameOf(window)); }

void getCurrentMouseLocation(Point* location) {
  static const id eventClass = classObject("NSEvent");
  static const SEL mouseLocation = sel_registerName("mouseLocation");
  const CGPoint mouse = sendMessage<CGPoint>(eventClass, mouseLocation);
  *location = {.v = pixel(mouse.y), .h = pixel(mouse.x)};
}

void convertNSMousePtToCG(Point* location) {
  const double height = frameOf(screenOf(getMainPhotoshopWindow())).size.height;
  location->v = pixel(height - location->v);
}

void screenRefreshCallback(std::uint32_t count, const CGRect* rects, void* userInfo) {
  auto& navigator = *static_cast<Navigate2D*>(userInfo);
  if (getMainPhotoshopWindow() == nullptr || navigator.m_refreshWait <= 0) return;
  Rect bounds;
  getMainPhotoshopWindowBounds(&bounds);
  const auto inWindow = [&](const CGRect& rect) { return overlaps(rect, bounds); };
  if (std::any_of(rects, rects + count, inWindow)) navigator.m_refreshWait = 0;
}

OSStatus mouseDownHandler(EventHandlerCallRef nextHandler, EventRef event, void*) {
  if (isClick(event) && !isSynthesized(event)) return noErr;
  return CallNextEventHandler(nextHandler, event);
}
