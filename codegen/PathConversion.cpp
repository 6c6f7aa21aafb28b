#include "codegen/PathConversion.h"

#include <CoreServices/CoreServices.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string>

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

/// In bytes. No file system has longer paths.
constexpr CFIndex kLongestPath = 1 << 20;

/// The path in UTF-8; nullopt if its length cannot be that of a path, or if it cannot be converted.
std::optional<std::string> utf8(CFStringRef path) {
  const CFIndex size =
      CFStringGetMaximumSizeForEncoding(CFStringGetLength(path), kCFStringEncodingUTF8);
  if (size < 0 || size > kLongestPath) return std::nullopt;
  std::string bytes(static_cast<std::size_t>(size) + 1, '\0');
  if (!CFStringGetCString(path, bytes.data(), size + 1, kCFStringEncodingUTF8)) return std::nullopt;
  return bytes.c_str();
}

/// The greatest `Integer` that does not exceed the bytes of a buffer.
template <class Integer>
Integer sizeAs(std::size_t size) {
  constexpr std::size_t kGreatest = std::numeric_limits<Integer>::max();
  return static_cast<Integer>(std::min(size, kGreatest));
}

/// The same; nullopt if there is no path, or an empty one.
std::optional<std::string> utf8(const CFObject<CFStringRef>& path) {
  if (!path) return std::nullopt;
  auto text = utf8(path.get());
  if (text && text->empty()) return std::nullopt;
  return text;
}

CFStringRef desktopFolder() {
  const CFArrayRef paths =
      NSSearchPathForDirectoriesInDomains(NSDesktopDirectory, NSUserDomainMask, true);
  if (paths == nullptr || CFArrayGetCount(paths) < 1) return nullptr;
  return static_cast<CFStringRef>(CFArrayGetValueAtIndex(paths, 0));
}

void copyLimited(const std::string& text, char* out, std::size_t size) {
  const std::size_t length = std::min(text.size(), size - 1);
  std::memcpy(out, text.data(), length);
  out[length] = '\0';
}

/// The path of `url` with a terminator. The platform leaves the terminator out if the path takes
/// the whole buffer; the path then does not fit.
bool copyPath(CFURLRef url, char* path, std::size_t size) {
  return CFURLGetFileSystemRepresentation(url, true, asBytes(path), sizeAs<CFIndex>(size)) &&
         std::memchr(path, '\0', size) != nullptr;
}

}  // namespace

void AliasToFullPath(AliasHandle alias, char* path, std::size_t size) {
  if (path == nullptr) return;
  path[0] = '\0';
  FSRef target;
  Boolean wasChanged = 0;
  if (FSResolveAlias(nullptr, alias, &target, &wasChanged) != noErr) return;
  if (FSRefMakePath(&target, asBytes(path), sizeAs<UInt32>(size)) != noErr) path[0] = '\0';
}

void FullPathToAlias(const char* path, AliasHandle& alias) {
  alias = nullptr;
  AliasHandle made = nullptr;
  if (sPSAlias->MacNewAliasFromCString(path, &made) == 0) alias = made;
}

void FullPathToAlias(const char* path, Handle& alias) {
  alias = nullptr;
  AliasHandle made = nullptr;
  FullPathToAlias(path, made);
  alias = reinterpret_cast<Handle>(made);
}

void BookmarkToFullPath(CFDataRef bookmark, char* path, std::size_t size) {
  if (path == nullptr) return;
  path[0] = '\0';
  const OwnedURL url = resolveBookmark(bookmark);
  if (!url) NSLog(CFSTR("Could not resolve bookmark in BookmarkToFullPath"));
  // Without a URL the conversion fails and logs its line, too: readers of the log recognise an
  // unresolved bookmark by both lines together.
  if (!copyPath(url.get(), path, size)) {
    NSLog(CFSTR("Could not convert in BookmarkToFullPath"));
    path[0] = '\0';
  }
}

std::optional<std::string> pathInAlias(AliasHandle alias) {
  CFStringRef path = nullptr;
  if (FSCopyAliasInfo(alias, nullptr, nullptr, &path, nullptr, nullptr) != noErr) {
    return std::nullopt;
  }
  return utf8(CFObject<CFStringRef>(path));
}

std::optional<std::string> pathInBookmark(CFDataRef bookmark) {
  return utf8(CFObject<CFStringRef>(
      static_cast<CFStringRef>(CFURLCreateResourcePropertyForKeyFromBookmarkData(
          kCFAllocatorDefault, kCFURLPathKey, bookmark))));
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
  const auto text = utf8(folder);
  if (!text) return kSPBadParameterError;
  copyLimited(*text, path, room);
  const std::size_t length = PIstrlcat(path, "/", room);
  path[room - 1] = '\0';
  return length < room ? 0 : kSPBadParameterError;
}
