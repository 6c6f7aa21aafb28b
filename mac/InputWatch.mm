#include "mac/InputWatch.h"

#include <unistd.h>

namespace mrvmac {

namespace {

constexpr std::int64_t kOptionKey = 58;
constexpr std::int64_t kCommandKey = 55;

/// Whether a key is down after an event that says only that the modifiers changed.
bool isDownAfterChange(std::int64_t key, CGEventFlags flags) {
  if (key == kOptionKey) return (flags & kCGEventFlagMaskAlternate) != 0;
  if (key == kCommandKey) return (flags & kCGEventFlagMaskCommand) != 0;
  return false;
}

Input keyInput(CGEventType type, CGEventRef event) {
  const std::int64_t key = CGEventGetIntegerValueField(event, kCGKeyboardEventKeycode);
  Input input;
  input.kind = InputKind::kKey;
  input.key = static_cast<std::uint32_t>(key);
  input.down = type == kCGEventFlagsChanged ? isDownAfterChange(key, CGEventGetFlags(event))
                                            : type == kCGEventKeyDown;
  return input;
}

}  // namespace

Input wheelInput(CGEventRef event) {
  Input input;
  input.vertical = CGEventGetIntegerValueField(event, kCGScrollWheelEventPointDeltaAxis1);
  input.horizontal = CGEventGetIntegerValueField(event, kCGScrollWheelEventPointDeltaAxis2);
  input.flags = CGEventGetFlags(event) & (kOptionFlag | kCommandFlag);
  return input;
}

InputWatch::InputWatch() {
  const CGEventMask mask = CGEventMaskBit(kCGEventScrollWheel) | CGEventMaskBit(kCGEventKeyDown) |
                           CGEventMaskBit(kCGEventKeyUp) | CGEventMaskBit(kCGEventFlagsChanged);
  tap_ = CGEventTapCreate(kCGSessionEventTap, kCGTailAppendEventTap, kCGEventTapOptionListenOnly,
                          mask, watch, this);
  if (tap_ == nullptr) return;
  source_ = CFMachPortCreateRunLoopSource(kCFAllocatorDefault, tap_, 0);
  CFRunLoopAddSource(CFRunLoopGetMain(), source_, kCFRunLoopCommonModes);
}

InputWatch::~InputWatch() {
  if (tap_ == nullptr) return;
  CFRunLoopRemoveSource(CFRunLoopGetMain(), source_, kCFRunLoopCommonModes);
  CFRelease(source_);
  CFMachPortInvalidate(tap_);
  CFRelease(tap_);
}

CGEventRef InputWatch::watch(CGEventTapProxy, CGEventType type, CGEventRef event, void* self) {
  auto& input = *static_cast<InputWatch*>(self);
  if (type == kCGEventTapDisabledByTimeout || type == kCGEventTapDisabledByUserInput) {
    CGEventTapEnable(input.tap_, true);
  } else if (CGEventGetIntegerValueField(event, kCGEventSourceUnixProcessID) == getpid()) {
    // The plug-in is in this process; other input is the user's.
    input.add(type, event);
  }
  return event;
}

void InputWatch::add(CGEventType type, CGEventRef event) {
  if (type != kCGEventScrollWheel) {
    inputs_.push_back(keyInput(type, event));
    return;
  }
  inputs_.push_back(wheelInput(event));
  wheelLocations_.push_back(CGEventGetLocation(event));
}

}  // namespace mrvmac
