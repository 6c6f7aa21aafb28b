// The access suite: loaded plug-ins, and calls between them.
#pragma once

#include "SPMData.h"

inline constexpr char kSPAccessSuite[] = "SP Access Suite";
inline constexpr int32 kSPAccessSuiteVersion = 3;

using SPAccessRef = struct SPAccess*;
using SPPlatformAccessInfo = struct SPPlatformAccess;

struct SPAccessSuite {
  SPErr (*AcquirePlugin)(SPPluginRef plugin, SPAccessRef* access);
  SPErr (*ReleasePlugin)(SPAccessRef access);
  SPErr (*GetAccessPlugin)(SPAccessRef access, SPPluginRef* plugin);
  SPErr (*GetAccessInfo)(SPAccessRef access, SPPlatformAccessInfo** info);
  SPErr (*CallPlugin)(SPAccessRef access, const char* caller, const char* selector, void* message,
                      SPErr* result);
  SPErr (*GetAccessCount)(SPAccessRef access, int32* count);
  SPErr (*GetCurrentPlugin)(SPPluginRef* plugin);
  SPErr (*SetCurrentPlugin)(SPPluginRef plugin);
};
