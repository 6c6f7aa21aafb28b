// Fails "device-thread": acquires a suite on another thread.
#include <Carbon/Carbon.h>

#include "PlugIn.h"

namespace {

OSStatus ask(void* basic) {
  acquireDescriptors(static_cast<SPBasicSuite*>(basic));
  return 0;
}

}  // namespace

ENTRY_POINT(const char*, const char* selector, void* message) {
  if (isStartup(selector)) {
    MPTaskID task = nullptr;
    MPCreateTask(&ask, basicSuiteOf(message), 512000, nullptr, nullptr, nullptr, 0, &task);
  }
  return 0;
}
