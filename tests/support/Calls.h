// Calls of the plug-in's entry point, as the host makes them.
#pragma once

#include <SPMData.h>

#include "plugin/AutoPluginMain.h"
#include "simulator/host/Host.h"

namespace testing_support {

inline int callPlugin(const char* caller, const char* selector) {
  SPMessageData message = {0, simulator::theHost().plugIn(), nullptr,
                           simulator::theHost().basicSuite()};
  return AutoPluginMain(caller, selector, &message);
}

inline int startUp() { return callPlugin("SP Interface", "Startup"); }
inline int shutDown() { return callPlugin("SP Interface", "Shutdown"); }

}  // namespace testing_support
