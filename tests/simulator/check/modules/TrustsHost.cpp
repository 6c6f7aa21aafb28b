// Fails "hostile-host": uses a suite without checking that it was acquired.
#include "PlugIn.h"

ENTRY_POINT(const char*, const char* selector, void* message) {
  if (!isStartup(selector)) return 0;
  SPBasicSuite* const basic = basicSuiteOf(message);
  const auto* volatile suite = acquireDescriptors(basic);
  PIActionDescriptor descriptor = nullptr;
  suite->Make(&descriptor);
  suite->Free(descriptor);
  basic->ReleaseSuite(kDescriptorSuite, kDescriptorVersion);
  return 0;
}
