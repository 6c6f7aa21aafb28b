// What one dump goes through from line to line. [main-thread]
#pragma once

#include <cstdint>

#include "codegen/FreeZone.h"

/// The indentation of the lines being written, in steps of five spaces. 1 after a dump.
extern std::int16_t tabLevel;

/// The variables that the function being written must release; null outside of a dump.
extern FreeZone* freeZone;
