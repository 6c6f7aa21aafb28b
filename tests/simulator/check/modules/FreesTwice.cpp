// Fails "handles-respected": frees a descriptor twice.
#include "PlugIn.h"

ENTRY_POINT(const char*, const char* selector, void* message) {
  const auto* const suite =
      isStartup(selector) ? acquireDescriptors(basicSuiteOf(message)) : nullptr;
  if (suite == nullptr) return 0;
  PIActionDescriptor descriptor = nullptr;
  suite->Make(&descriptor);
  suite->Free(descriptor);
  suite->Free(descriptor);
  return 0;
}
