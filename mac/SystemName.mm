#include "mac/SystemName.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Carbon/Carbon.h>
#import <Foundation/Foundation.h>
#include <sys/sysctl.h>

namespace mrvmac {

namespace {

std::optional<std::string> settingText(const char* name) {
  char text[256];
  size_t size = sizeof text;
  if (sysctlbyname(name, text, &size, nullptr, 0) != 0 || size == 0) return std::nullopt;
  return std::string(text, size - 1);
}

bool runsTranslated() {
  int translated = 0;
  size_t size = sizeof translated;
  return sysctlbyname("sysctl.proc_translated", &translated, &size, nullptr, 0) == 0 &&
         translated == 1;
}

}  // namespace

std::string systemName() {
  return std::string("macOS ") + NSProcessInfo.processInfo.operatingSystemVersionString.UTF8String;
}

std::string processorName() {
  const std::string name = settingText("machdep.cpu.brand_string").value_or("unknown");
  return name + (runsTranslated() ? ", translated" : ", native");
}

std::optional<std::string> keyboardLayoutIdentifier() {
  const TISInputSourceRef source = TISCopyCurrentKeyboardInputSource();
  if (source == nullptr) return std::nullopt;
  std::optional<std::string> identifier;
  const auto text =
      (__bridge NSString*)TISGetInputSourceProperty(source, kTISPropertyInputSourceID);
  if (text != nil) identifier = text.UTF8String;
  CFRelease(source);
  return identifier;
}

std::optional<std::string> preferencesFolderPath() {
  FSRef folder = {};
  if (FSFindFolder(kUserDomain, kPreferencesFolderType, kCreateFolder, &folder) != noErr) {
    return std::nullopt;
  }
  const CFURLRef url = CFURLCreateFromFSRef(kCFAllocatorDefault, &folder);
  if (url == nullptr) return std::nullopt;
  NSURL* const known = CFBridgingRelease(url);
  if (known.path == nil) return std::nullopt;
  return std::string(known.path.UTF8String);
}

bool maySynthesizeInput(bool ask) {
  NSDictionary* const options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @(ask)};
  return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options) != 0;
}

}  // namespace mrvmac
