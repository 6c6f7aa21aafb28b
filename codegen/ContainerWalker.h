// The walk over descriptors and lists, to a text that is being written (Walkers.h says what it
// writes).
#pragma once

#include <PIActions.h>

#include "codegen/SourceWriter.h"

/// REQUIRES of both: the action suites are held. [main-thread]
void writeDescriptor(PIActionDescriptor descriptor, SourceWriter& out);
void writeList(PIActionList list, SourceWriter& out);
