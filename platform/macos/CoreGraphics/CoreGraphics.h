// Quartz: geometry, synthesized input and the notice of redrawn screen areas. [main-thread]
#pragma once

#include <CoreFoundation/CoreFoundation.h>

using CGFloat = double;

struct CGPoint {
  CGFloat x;
  CGFloat y;
};

struct CGSize {
  CGFloat width;
  CGFloat height;
};

struct CGRect {
  CGPoint origin;
  CGSize size;
};

using CGError = SInt32;
using CGKeyCode = UInt16;
using CGEventFlags = std::uint64_t;
using CGEventType = std::uint32_t;
using CGEventTapLocation = std::uint32_t;
using CGScrollEventUnit = std::uint32_t;
using CGEventRef = struct __CGEvent*;
using CGEventSourceRef = struct __CGEventSource*;

enum : CGEventTapLocation { kCGSessionEventTap = 1 };
enum : CGScrollEventUnit { kCGScrollEventUnitPixel = 0 };
enum : CGEventType { kCGEventKeyDown = 10, kCGEventKeyUp = 11, kCGEventScrollWheel = 22 };
enum : CGEventFlags {
  kCGEventFlagMaskAlternate = 0x00080000,
  kCGEventFlagMaskCommand = 0x00100000
};

/// Told of `count` redrawn rectangles of the screen.
using CGScreenRefreshCallback = void (*)(std::uint32_t count, const CGRect* rects, void* userInfo);

extern "C" {

/// A keyboard event of the virtual key, going down or up. The caller releases it.
CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode virtualKey, bool keyDown);

/// A scroll event of `wheelCount` wheels (1 to 3), each further wheel's amount (32-bit) behind the
/// first. The caller releases it.
CGEventRef CGEventCreateScrollWheelEvent(CGEventSourceRef source, CGScrollEventUnit units,
                                         std::uint32_t wheelCount, std::int32_t wheel1, ...);

void CGEventSetType(CGEventRef event, CGEventType type);
void CGEventSetFlags(CGEventRef event, CGEventFlags flags);

/// Where the event happens: global display coordinates in points, y growing downward.
void CGEventSetLocation(CGEventRef event, CGPoint location);

/// Puts a copy of the event into the system's input stream at the tap.
void CGEventPost(CGEventTapLocation tap, CGEventRef event);

/// How long local hardware input is held back after each synthesized event.
CGError CGSetLocalEventsSuppressionInterval(CFTimeInterval seconds);

CGError CGRegisterScreenRefreshCallback(CGScreenRefreshCallback callback, void* userInfo);
void CGUnregisterScreenRefreshCallback(CGScreenRefreshCallback callback, void* userInfo);
}
