// The runtime suite: the lists that the plug-in manager uses.
#pragma once

#include "SPMData.h"

inline constexpr char kSPRuntimeSuite[] = "SP Runtime Suite";
inline constexpr int32 kSPRuntimeSuiteVersion = 5;

using SPStringPoolRef = struct SPStringPool*;
using SPSuiteListRef = struct SPSuiteList*;
using SPFileListRef = struct SPFileList*;
using SPPluginListRef = struct SPPluginList*;
using SPAdapterListRef = struct SPAdapterList*;
using SPPlatformFileSpecification = struct SPPlatformFileSpec;
using SPHostProc = SPErr (*)();

struct SPRuntimeSuite {
  SPErr (*GetRuntimeStringPool)(SPStringPoolRef* stringPool);
  SPErr (*GetRuntimeSuiteList)(SPSuiteListRef* suiteList);
  SPErr (*GetRuntimeFileList)(SPFileListRef* fileList);
  SPErr (*GetRuntimePluginList)(SPPluginListRef* pluginList);
  SPErr (*GetRuntimeAdapterList)(SPAdapterListRef* adapterList);
  SPErr (*GetRuntimeHostProc)(SPHostProc* hostProc);
  SPErr (*GetRuntimePluginsFolder)(SPPlatformFileSpecification* folder);
};
