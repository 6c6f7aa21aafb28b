// File URLs, data, and bookmarks.
#include "simulator/macos/Bookmarks.h"

#include <cstring>
#include <filesystem>
#include <string_view>

#include "simulator/macos/CFObjects.h"

namespace simulator {

namespace {

constexpr std::string_view kMark = "book";

bool exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

CFDataRef makeData(std::string_view bytes) {
  return static_cast<CFDataRef>(
      theCFObjects().make(CFBytes{std::vector<std::uint8_t>(bytes.begin(), bytes.end())}));
}

CFURLRef makeURL(std::string path) {
  return static_cast<CFURLRef>(theCFObjects().make(CFUrl{std::move(path)}));
}

}  // namespace

CFDataRef makeBookmark(const std::string& path) { return makeData(std::string(kMark) + path); }

std::optional<std::string> pathOfBookmark(CFDataRef bookmark) {
  const auto data = theCFObjects().get<CFBytes>(bookmark, "reading a bookmark");
  if (!data) return std::nullopt;
  const std::string bytes(data->bytes.begin(), data->bytes.end());
  return bytes.starts_with(kMark) ? std::optional(bytes.substr(kMark.size())) : std::nullopt;
}

}  // namespace simulator

using namespace simulator;

CFDataRef CFDataCreate(CFAllocatorRef, const UInt8* bytes, CFIndex length) {
  return makeData({reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length)});
}

CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef, const UInt8* buffer,
                                                 CFIndex bufLen, Boolean) {
  if (bufLen <= 0) return nullptr;
  const std::string path(reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(bufLen));
  return makeURL(std::filesystem::absolute(path).string());
}

Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean, UInt8* buffer, CFIndex maxBufLen) {
  if (url == nullptr) return false;
  const auto known = theCFObjects().get<CFUrl>(url, "CFURLGetFileSystemRepresentation");
  if (!known || static_cast<CFIndex>(known->path.size()) >= maxBufLen) return false;
  std::memcpy(buffer, known->path.c_str(), known->path.size() + 1);
  return true;
}

CFDataRef CFURLCreateBookmarkData(CFAllocatorRef, CFURLRef url, CFURLBookmarkCreationOptions,
                                  CFArrayRef, CFURLRef, CFErrorRef*) {
  const auto known = theCFObjects().get<CFUrl>(url, "CFURLCreateBookmarkData");
  return known && exists(known->path) ? makeBookmark(known->path) : nullptr;
}

CFURLRef CFURLCreateByResolvingBookmarkData(CFAllocatorRef, CFDataRef bookmark,
                                            CFURLBookmarkResolutionOptions, CFURLRef, CFArrayRef,
                                            Boolean* isStale, CFErrorRef*) {
  const auto path = bookmark != nullptr ? pathOfBookmark(bookmark) : std::nullopt;
  if (!path || !exists(*path)) return nullptr;
  if (isStale != nullptr) *isStale = false;
  return makeURL(*path);
}
