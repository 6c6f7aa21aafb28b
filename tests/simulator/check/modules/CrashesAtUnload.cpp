// Ends the process while it is unloaded.
#include <cstdlib>

#include "PlugIn.h"

namespace {

struct Ender {
  ~Ender() { std::abort(); }
} ender;

}  // namespace

ENTRY_POINT(const char*, const char*, void*) { return 0; }
