#include "codegen/DumpState.h"

#include <cstdint>

#include "codegen/FreeZone.h"

std::int16_t tabLevel = 0;
FreeZone* freeZone = nullptr;
