// Foundation's system log and search paths, and the arrays in which it answers.
#include <cstdarg>
#include <cstdio>
#include <map>

#include "platform/foundation/FoundationCalls.h"
#include "simulator/base/Log.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/Folders.h"

namespace simulator {

namespace {

/// The array of one path. It is lent to the caller, so it has to stay; there is one for each path.
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

}  // namespace simulator

using namespace simulator;

extern "C" {

/// The directives of printf, but none for objects.
void NSLog(CFStringRef format, ...) {
  const auto text = theCFObjects().get<CFText>(format, "NSLog");
  if (!text) return;
  va_list arguments;
  va_start(arguments, format);
  theLog().write("syslog", {{"text", formatted(text->utf8, arguments)}});
  va_end(arguments);
}

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
  return list ? list->values.at(static_cast<std::size_t>(idx)) : nullptr;
}
