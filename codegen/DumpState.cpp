#include "codegen/DumpState.h"

std::int16_t tabLevel = 0;
FreeZone* freeZone = nullptr;
