// Write the statements that rebuild a container through the host's suites.
//
// An item that the host fails to return, or returns with a length beyond 31 bits, becomes a line
// that begins with "ERROR", and the walk continues with the next item. If the host does not report
// a container's item count, or one beyond 31 bits, nothing is written for that container. Each
// container written is added to `freeZone`, if that is set.
//
// Nesting uses heap, not stack, and may have any depth. If one of the action suites cannot be
// acquired, nothing is written. [main-thread]
#pragma once

#include <PIActions.h>

#include <cstdio>

/// Writes `descriptor` to `stream`; nothing if it is null. With a null `stream` the text is
/// discarded.
void DumpInfoFromDescriptor(PIActionDescriptor descriptor, std::FILE* stream);

/// Writes `list` to `stream`; nothing if it is null. With a null `stream` the text is discarded.
void DumpInfoFromList(PIActionList list, std::FILE* stream);

/// Writes `reference` to `stream`; nothing if it is null. With a null `stream` the text is
/// discarded.
void DumpInfoFromReference(PIActionReference reference, std::FILE* stream);
