#include "hostwindow/HostWindow.h"

#include "hostwindow/ObjcMessage.h"
#include "hostwindow/ScreenGeometry.h"

namespace {

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
  // Releases the reference that the caller passed.
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
