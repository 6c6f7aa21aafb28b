// Write the statements that build a container equal to a given one through the host's suites.
//
// What the host does not answer becomes a line that begins with "ERROR", and the walk goes on with
// the next item; a container that does not tell its count writes nothing. All containers written
// are added to `freeZone` where there is one. `stream` may be null: the text goes nowhere.
//
// Depth costs heap, not stack: containers may lie within one another to any depth.
// Where a suite of the actions cannot be acquired, nothing is written. [main-thread]
#pragma once

#include <PIActions.h>

#include <cstdio>

void DumpInfoFromDescriptor(PIActionDescriptor descriptor, std::FILE* stream);
void DumpInfoFromList(PIActionList list, std::FILE* stream);
void DumpInfoFromReference(PIActionReference reference, std::FILE* stream);
