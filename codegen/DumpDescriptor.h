// Writes an action descriptor as source text: a function that rebuilds the descriptor through the
// host's suites and plays an event with it. An aid for developers; the plug-in does not call it.
//
//   PIUDumpDescriptor(eventSet, descriptor, "/tmp/played.txt");
#pragma once

#include <PIActions.h>

#include <cstdint>

#include "codegen/DumpState.h"

/// Appends one generated function to the file `fileName`, which is created if it does not exist.
/// `eventID`: the event to play. `descriptor`: the descriptor to rebuild and play the event with,
/// which remains the caller's; if it is null, the event is played without a descriptor.
///
/// Reports no errors and does not throw. If a host suite is missing, nothing is written and the
/// file is not opened. If the file cannot be opened, the text is discarded. An item that the host
/// fails to return becomes a line that begins with "ERROR". If memory runs out, the text ends
/// early. REQUIRES: `fileName` is not null. [main-thread]
void PIUDumpDescriptor(std::uint32_t eventID, PIActionDescriptor descriptor, const char* fileName);
