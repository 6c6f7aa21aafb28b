// The reference walker, for a text that is already being written.
#pragma once

#include <PIActions.h>

#include "codegen/SourceWriter.h"

/// As DumpInfoFromReference, to a writer. REQUIRES: the action suites are held.
void WriteReference(PIActionReference reference, SourceWriter& out);
