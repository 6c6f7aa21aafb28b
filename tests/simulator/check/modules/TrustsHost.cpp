// Fails "hostile-host": calls through a suite without asking whether it got it.
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
