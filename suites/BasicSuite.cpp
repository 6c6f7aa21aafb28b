#include "suites/BasicSuite.h"

#include <cstdint>

SPBasicSuite* sSPBasic = nullptr;

std::int32_t acquireSuite(const char* name, std::int32_t version, const void** suite) {
  if (sSPBasic == nullptr) return kSPBadParameterError;
  return sSPBasic->AcquireSuite(name, version, suite);
}

bool releaseSuite(const char* name, std::int32_t version) {
  if (sSPBasic == nullptr) return false;
  sSPBasic->ReleaseSuite(name, version);
  return true;
}
