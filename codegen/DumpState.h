// State that a dump keeps from line to line. [main-thread]
#pragma once

#include <cstdint>

#include "codegen/FreeZone.h"

/// The indentation level of the next line; one level is five spaces. 1 after a dump.
extern std::int16_t tabLevel;

/// The variables that the generated function must release; null outside a dump.
extern FreeZone* freeZone;
