// What the simulated Mac's functions with variable arguments do, for callers that have these
// arguments in another form.
#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <cstdarg>
#include <cstdint>
#include <vector>

namespace simulator {

/// CGEventCreateScrollWheelEvent with the amounts of all wheels. [any-thread]
CGEventRef createScrollWheelEvent(CGScrollEventUnit units, std::vector<std::int32_t> wheels);

/// NSLog. [any-thread]
void logFormatted(CFStringRef format, std::va_list arguments);

}  // namespace simulator
