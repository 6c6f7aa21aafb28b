// The walk over a reference, to a text that is being written (Walkers.h says what it writes).
#pragma once

#include <PIActions.h>

#include "codegen/SourceWriter.h"

/// REQUIRES: the action suites are held. [main-thread]
void writeReference(PIActionReference reference, SourceWriter& out);
