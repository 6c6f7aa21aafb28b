// What the simulated Mac's functions with variable arguments do, for callers that have these
// arguments in another form.
#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <cstdarg>
#include <cstdint>

namespace simulator {

/// CGEventCreateScrollWheelEvent with the amounts of `count` wheels. [any-thread]
CGEventRef createScrollWheelEvent(CGScrollEventUnit units, const std::int32_t* wheels,
                                  std::uint32_t count);

/// NSLog. [any-thread]
void logFormatted(CFStringRef format, std::va_list arguments);

}  // namespace simulator
