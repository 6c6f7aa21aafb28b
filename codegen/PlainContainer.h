// Writes the statements that rebuild descriptors and lists, in the plain form; Walkers.h describes
// them.
#pragma once

#include <PIActions.h>

#include "codegen/SourceWriter.h"

/// Writes `descriptor`; nothing if it is null or the host does not report its item count.
/// REQUIRES: the action suites are held. [main-thread]
void writeDescriptor(PIActionDescriptor descriptor, SourceWriter& out);

/// Writes `list`; nothing if it is null or the host does not report its item count.
/// REQUIRES: the action suites are held. [main-thread]
void writeList(PIActionList list, SourceWriter& out);
