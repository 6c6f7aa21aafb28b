// Strings and URLs.
#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>

#include <algorithm>
#include <cstring>

#include "simulator/macos/CFObjects.h"
#include "simulator/macos/Folders.h"
#include "simulator/macos/MacRoman.h"

using namespace simulator;

const CFAllocatorRef kCFAllocatorDefault = nullptr;

void CFRelease(CFTypeRef cf) { theCFObjects().release(cf); }

Boolean CFStringGetCString(CFStringRef theString, char* buffer, CFIndex bufferSize,
                           CFStringEncoding encoding) {
  const auto text = theCFObjects().get<CFText>(theString, "CFStringGetCString");
  if (!text) return false;
  const std::optional<std::string> bytes =
      encoding == kCFStringEncodingMacRoman ? macRomanFromUtf8(text->utf8) : text->utf8;
  if (!bytes || static_cast<CFIndex>(bytes->size()) >= bufferSize) return false;
  std::memcpy(buffer, bytes->c_str(), bytes->size() + 1);
  return true;
}

CFURLRef CFURLCreateFromFSRef(CFAllocatorRef, const FSRef* fsRef) {
  const std::optional<std::string> path = pathOfRef(*fsRef);
  if (!path) return nullptr;
  return static_cast<CFURLRef>(theCFObjects().make(CFUrl{*path}));
}

CFStringRef CFURLCopyFileSystemPath(CFURLRef anURL, CFURLPathStyle) {
  const auto url = theCFObjects().get<CFUrl>(anURL, "CFURLCopyFileSystemPath");
  return url ? makeCFString(url->path) : nullptr;
}
