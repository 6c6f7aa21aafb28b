// Fails "without-framework": starts its thread even if the framework is absent.
#include <Carbon/Carbon.h>

#include "PlugIn.h"

namespace {

OSStatus listen(void*) { return 0; }

}  // namespace

ENTRY_POINT(const char*, const char* selector, void*) {
  if (isStartup(selector)) {
    MPTaskID task = nullptr;
    MPCreateTask(&listen, nullptr, 512000, nullptr, nullptr, nullptr, 0, &task);
  }
  return 0;
}
