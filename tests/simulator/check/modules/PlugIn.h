// Helpers shared by the faulty plug-ins.
#pragma once

#include <PIActions.h>
#include <SPBasic.h>
#include <SPMData.h>

#include <cstring>

#define ENTRY_POINT extern "C" __attribute__((visibility("default"))) int AutoPluginMain

inline SPBasicSuite* basicSuiteOf(void* message) {
  return static_cast<SPMessageData*>(message)->basic;
}

inline bool isStartup(const char* selector) { return std::strcmp(selector, "Startup") == 0; }

/// Acquires a suite of the host; null if the host refuses.
template <class Suite>
const Suite* acquire(SPBasicSuite* basic, const char* name, int version) {
  const void* suite = nullptr;
  if (basic->AcquireSuite(name, version, &suite) != 0) return nullptr;
  return static_cast<const Suite*>(suite);
}

inline constexpr const char* kDescriptorSuite = "df135115-c769-11d0-8079-00c04fd7ec47";
inline constexpr int kDescriptorVersion = 5;

inline const PSActionDescriptorProcs* acquireDescriptors(SPBasicSuite* basic) {
  return acquire<PSActionDescriptorProcs>(basic, kDescriptorSuite, kDescriptorVersion);
}
