// Lets an exception out of the function of its thread.
#include <Carbon/Carbon.h>

#include <stdexcept>

#include "PlugIn.h"

namespace {

OSStatus run(void*) { throw std::logic_error("alone"); }

}  // namespace

ENTRY_POINT(const char*, const char* selector, void*) {
  if (isStartup(selector)) {
    MPCreateTask(&run, nullptr, 512000, nullptr, nullptr, nullptr, 0, nullptr);
  }
  return 0;
}
