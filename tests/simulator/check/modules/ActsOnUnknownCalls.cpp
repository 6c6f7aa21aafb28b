// Fails "unknown-calls": acquires a suite on every call.
#include "PlugIn.h"

ENTRY_POINT(const char*, const char*, void* message) {
  SPBasicSuite* const basic = basicSuiteOf(message);
  if (acquireDescriptors(basic) != nullptr) {
    basic->ReleaseSuite(kDescriptorSuite, kDescriptorVersion);
  }
  return 0;
}
