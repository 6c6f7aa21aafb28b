#include "codegen/PathConversion.h"

#include <CoreServices/CoreServices.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

#include "hostutil/CFObject.h"
#include "hostutil/Strings.h"
#include "platform/foundation/FoundationCalls.h"
#include "suites/Suites.h"

namespace {

using OwnedURL = CFObject<CFURLRef>;

UInt8* asBytes(char* text) { return reinterpret_cast<UInt8*>(text); }

OwnedURL resolveBookmark(CFDataRef bookmark) {
  Boolean isStale = 0;
  return OwnedURL(CFURLCreateByResolvingBookmarkData(
      kCFAllocatorDefault, bookmark,
      kCFURLBookmarkResolutionWithoutUIMask | kCFURLBookmarkResolutionWithoutMountingMask, nullptr,
      nullptr, &isStale, nullptr));
}

OwnedURL makeFileURL(const char* path) {
  const auto length = static_cast<CFIndex>(std::strlen(path));
  return OwnedURL(CFURLCreateFromFileSystemRepresentation(
      kCFAllocatorDefault, reinterpret_cast<const UInt8*>(path), length, false));
}

/// The text in UTF-8 with its terminator; empty text if it cannot be converted.
std::vector<char> utf8(CFStringRef text) {
  const CFIndex size =
      CFStringGetMaximumSizeForEncoding(CFStringGetLength(text), kCFStringEncodingUTF8) + 1;
  std::vector<char> bytes(static_cast<std::size_t>(size));
  if (!CFStringGetCString(text, bytes.data(), size, kCFStringEncodingUTF8)) bytes.front() = '\0';
  return bytes;
}

CFStringRef desktopFolder() {
  const CFArrayRef paths =
      NSSearchPathForDirectoriesInDomains(NSDesktopDirectory, NSUserDomainMask, true);
  if (paths == nullptr || CFArrayGetCount(paths) == 0) return nullptr;
  return static_cast<CFStringRef>(CFArrayGetValueAtIndex(paths, 0));
}

void copyLimited(const char* text, char* out, std::size_t size) {
  const std::size_t length = std::min(std::strlen(text), size - 1);
  std::memcpy(out, text, length);
  out[length] = '\0';
}

}  // namespace

void AliasToFullPath(AliasHandle alias, char* path, std::size_t size) {
  if (path == nullptr) return;
  path[0] = '\0';
  FSRef target;
  Boolean wasChanged = 0;
  if (FSResolveAlias(nullptr, alias, &target, &wasChanged) != noErr) return;
  if (FSRefMakePath(&target, asBytes(path), static_cast<UInt32>(size)) != noErr) path[0] = '\0';
}

void FullPathToAlias(const char* path, AliasHandle& alias) {
  alias = nullptr;
  AliasHandle made = nullptr;
  if (sPSAlias->MacNewAliasFromCString(path, &made) == 0) alias = made;
}

void BookmarkToFullPath(CFDataRef bookmark, char* path, std::size_t size) {
  if (path == nullptr) return;
  path[0] = '\0';
  const OwnedURL url = resolveBookmark(bookmark);
  if (!url) NSLog(CFSTR("Could not resolve bookmark in BookmarkToFullPath"));
  // Without a URL the conversion fails and logs its line, too: readers of the log recognise an
  // unresolved bookmark by both lines together.
  if (!CFURLGetFileSystemRepresentation(url.get(), true, asBytes(path),
                                        static_cast<CFIndex>(size))) {
    NSLog(CFSTR("Could not convert in BookmarkToFullPath"));
    path[0] = '\0';
  }
}

void FullPathToBookmark(const char* path, CFDataRef& bookmark) {
  bookmark = nullptr;
  const OwnedURL url = makeFileURL(path);
  if (!url) {
    NSLog(CFSTR("Could not create url bookmark in FullPathToBookmark"));
    return;
  }
  bookmark = CFURLCreateBookmarkData(kCFAllocatorDefault, url.get(), 0, nullptr, nullptr, nullptr);
}

int GetFullPathToDesktop(char* path, std::int32_t size) {
  if (path == nullptr || size < 1) return kSPBadParameterError;
  const auto room = static_cast<std::size_t>(size);
  path[0] = '\0';
  const CFStringRef folder = desktopFolder();
  if (folder == nullptr) return kSPBadParameterError;
  copyLimited(utf8(folder).data(), path, room);
  const std::size_t length = PIstrlcat(path, "/", room);
  path[room - 1] = '\0';
  return length < room ? 0 : kSPBadParameterError;
}
