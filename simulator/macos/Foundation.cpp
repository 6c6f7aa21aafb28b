// Foundation's system log and search paths, and the arrays that hold the paths.
#include <fmt/format.h>

#include <cstdio>
#include <map>

#include "platform/foundation/FoundationCalls.h"
#include "simulator/base/Log.h"
#include "simulator/base/Text.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/Folders.h"
#include "simulator/macos/VariadicCalls.h"

namespace simulator {

namespace {

/// An array that holds `path`. Callers do not release it, so one array per path is kept for the
/// life of the process.
CFArrayRef arrayOf(const std::string& path) {
  static std::mutex mutex;
  static auto& arrays = *new std::map<std::string, CFTypeRef>;
  const std::lock_guard lock(mutex);
  CFTypeRef& array = arrays[path];
  if (array == nullptr) array = theCFObjects().makeConstant(CFList{{constantCFString(path)}});
  return static_cast<CFArrayRef>(array);
}

CFArrayRef emptyArray() {
  static const CFTypeRef array = theCFObjects().makeConstant(CFList{});
  return static_cast<CFArrayRef>(array);
}

std::string formatted(const std::string& format, va_list arguments) {
  char text[1024];
  std::vsnprintf(text, sizeof text, format.c_str(), arguments);
  return text;
}

}  // namespace

void logFormatted(CFStringRef format, std::va_list arguments) {
  const auto text = theCFObjects().get<CFText>(format, "NSLog");
  if (!text) return;
  theLog().write("syslog", {{"text", formatted(utf8From(text->units), arguments)}});
}

}  // namespace simulator

using namespace simulator;

extern "C" {

CFArrayRef NSSearchPathForDirectoriesInDomains(unsigned long directory, unsigned long domainMask,
                                               BOOL expandTilde) {
  const auto home = homeFolder();
  if (!home || directory != NSDesktopDirectory || domainMask != NSUserDomainMask)
    return emptyArray();
  return arrayOf(expandTilde ? (*home / "Desktop").string() : "~/Desktop");
}
}

CFIndex CFArrayGetCount(CFArrayRef theArray) {
  const auto list = theCFObjects().get<CFList>(theArray, "CFArrayGetCount");
  return list ? static_cast<CFIndex>(list->values.size()) : 0;
}

const void* CFArrayGetValueAtIndex(CFArrayRef theArray, CFIndex idx) {
  const auto list = theCFObjects().get<CFList>(theArray, "CFArrayGetValueAtIndex");
  if (!list) return nullptr;
  const auto index = static_cast<std::size_t>(idx);  // a negative index becomes an enormous one
  if (index < list->values.size()) return list->values[index];
  theLog().misuse(fmt::format("CFArrayGetValueAtIndex: the array has no value {}", idx));
  return nullptr;
}
