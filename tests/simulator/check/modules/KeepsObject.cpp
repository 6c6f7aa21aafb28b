// Fails "objects-freed": makes a descriptor and never frees it.
#include "PlugIn.h"

ENTRY_POINT(const char*, const char* selector, void* message) {
  if (!isStartup(selector)) return 0;
  PIActionDescriptor descriptor = nullptr;
  const auto* const suite = acquireDescriptors(basicSuiteOf(message));
  if (suite != nullptr) suite->Make(&descriptor);
  return 0;
}
