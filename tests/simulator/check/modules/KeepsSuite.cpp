// Fails "suites-released": acquires a suite and never releases it.
#include "PlugIn.h"

ENTRY_POINT(const char*, const char* selector, void* message) {
  if (isStartup(selector)) acquireDescriptors(basicSuiteOf(message));
  return 0;
}
