// Ends the process while it is loaded.
#include <cstdlib>

#include "PlugIn.h"

namespace {

const int ended = (std::abort(), 0);

}  // namespace

ENTRY_POINT(const char*, const char*, void*) { return ended; }
