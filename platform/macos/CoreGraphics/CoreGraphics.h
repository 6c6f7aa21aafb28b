// Quartz: geometry, synthesized input and callbacks for redrawn screen areas. [not documented as
// safe]
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

/// Called with `count` redrawn rectangles, in global display coordinates (y grows downward from the
/// screen's top), on the thread that processes the application's events.
using CGScreenRefreshCallback = void (*)(std::uint32_t count, const CGRect* rects, void* userInfo);

extern "C" {

/// Makes a keyboard event: the virtual key goes down or up. The caller releases it.
CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode virtualKey, bool keyDown);

/// Makes a scroll event of `wheelCount` wheels (1 to 3). The amounts of the second and third wheel
/// follow `wheel1` as 32-bit integers. The caller releases it.
CGEventRef CGEventCreateScrollWheelEvent(CGEventSourceRef source, CGScrollEventUnit units,
                                         std::uint32_t wheelCount, std::int32_t wheel1, ...);

/// Change a member of the event.
void CGEventSetType(CGEventRef event, CGEventType type);
void CGEventSetFlags(CGEventRef event, CGEventFlags flags);

/// Sets the event's location: global display coordinates in points, y growing downward.
void CGEventSetLocation(CGEventRef event, CGPoint location);

/// Posts a copy of the event to the system's input stream at `tap`.
void CGEventPost(CGEventTapLocation tap, CGEventRef event);

/// Sets for how long local hardware input is suppressed after each synthesized event.
CGError CGSetLocalEventsSuppressionInterval(CFTimeInterval seconds);

/// Registers or unregisters a callback together with its `userInfo`. 0, or an error.
CGError CGRegisterScreenRefreshCallback(CGScreenRefreshCallback callback, void* userInfo);
void CGUnregisterScreenRefreshCallback(CGScreenRefreshCallback callback, void* userInfo);
}
