// Fails "suites-released".
#include "PlugIn.h"

ENTRY_POINT(const char*, const char* selector, void* message) {
  if (isStartup(selector)) acquireDescriptors(basicSuiteOf(message));
  return 0;
}
