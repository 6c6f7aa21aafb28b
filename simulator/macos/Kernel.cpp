// Kernel settings and the debugger's log.
#include "simulator/macos/Kernel.h"

#include <CoreServices/CoreServices.h>
#include <sys/sysctl.h>

#include <cstring>
#include <string>

#include "simulator/base/Log.h"

namespace simulator {

std::optional<int>& processIsNative() {
  static std::optional<int> value = 1;
  return value;
}

}  // namespace simulator

using namespace simulator;

int sysctlbyname(const char* name, void* oldp, std::size_t* oldlenp, void*, std::size_t) {
  const std::optional<int> value = processIsNative();
  if (std::strcmp(name, "sysctl.proc_native") != 0 || !value) return -1;
  if (*oldlenp < sizeof *value) return -1;
  std::memcpy(oldp, &*value, sizeof *value);
  *oldlenp = sizeof *value;
  return 0;
}

void DebugStr(ConstStr255Param debuggerMsg) {
  const std::string text(reinterpret_cast<const char*>(debuggerMsg) + 1, debuggerMsg[0]);
  theLog().write("debug", {{"text", text}});
}
