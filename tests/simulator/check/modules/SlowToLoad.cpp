// Fails "load-time": computes for 0.2 s while it is loaded.
#include <ctime>

#include "PlugIn.h"

namespace {

struct Preparation {
  Preparation() {
    const std::clock_t begin = std::clock();
    while (std::clock() - begin < CLOCKS_PER_SEC / 5) continue;
  }
} preparation;

}  // namespace

ENTRY_POINT(const char*, const char*, void*) { return 0; }
