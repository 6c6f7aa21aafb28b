// The simulated Mac's functions with variable arguments. For arm64, this source alone is compiled
// by Linux's rules for calls, so it uses nothing that others compile too: an inline function of the
// library takes an object without members in a register by Linux's rules, and not by the Mac's.
#include "simulator/macos/VariadicCalls.h"

#include "platform/foundation/FoundationCalls.h"

CGEventRef CGEventCreateScrollWheelEvent(CGEventSourceRef, CGScrollEventUnit units,
                                         std::uint32_t wheelCount, std::int32_t wheel1, ...) {
  const std::uint32_t count = wheelCount > 1 ? wheelCount : 1;
  auto* const wheels = new std::int32_t[count];
  wheels[0] = wheel1;
  std::va_list others;
  va_start(others, wheel1);
  for (std::uint32_t i = 1; i < count; ++i) wheels[i] = va_arg(others, int);
  va_end(others);
  const CGEventRef event = simulator::createScrollWheelEvent(units, wheels, count);
  delete[] wheels;
  return event;
}

extern "C" {

/// Supports the directives of printf, not `%@`. Cuts the text off after 1023 bytes.
void NSLog(CFStringRef format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  simulator::logFormatted(format, arguments);
  va_end(arguments);
}
}
