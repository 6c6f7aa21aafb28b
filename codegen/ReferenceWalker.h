// Writes the statements that rebuild references; Walkers.h describes them.
#pragma once

#include <PIActions.h>

#include "codegen/SourceWriter.h"

/// Writes `reference`; nothing if it is null. REQUIRES: the action suites are held. [main-thread]
void writeReference(PIActionReference reference, SourceWriter& out);
