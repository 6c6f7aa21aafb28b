// Writes the statements that rebuild references, in the plain form; Walkers.h describes them.
#pragma once

#include <PIActions.h>

#include "codegen/SourceWriter.h"

/// Writes `reference`; nothing if it is null. REQUIRES: the action suites are held. [main-thread]
/// The platform's MachineExceptions.h has an enumerator `writeReference`, so the name is longer.
void writeWholeReference(PIActionReference reference, SourceWriter& out);
