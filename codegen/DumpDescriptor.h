// Writes an action descriptor out as source text: a function that rebuilds the descriptor through
// the host's suites and plays an event with it. A developer's aid; nothing else calls it.
//
//   PIUDumpDescriptor(eventSet, descriptor, "/tmp/played.txt");
#pragma once

#include <PIActions.h>

#include <cstdint>

#include "codegen/DumpState.h"

/// Appends one generated function to the file `fileName`, which is made where there is none.
/// `eventID`: the event to play. `descriptor`: the host's handle, still the caller's, or null.
/// Nothing is reported and nothing is thrown: where a host suite is missing, nothing is written and
/// the file is not opened; where the file cannot be opened, the text goes nowhere; where a host
/// call fails, a line that begins with "ERROR" stands in the text. REQUIRES: `fileName` is not
/// null. [main-thread]
void PIUDumpDescriptor(std::uint32_t eventID, PIActionDescriptor descriptor, const char* fileName);
