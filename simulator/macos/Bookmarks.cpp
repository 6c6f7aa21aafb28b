// Data, and bookmarks.
#include "simulator/macos/Bookmarks.h"

#include <fmt/format.h>

#include <filesystem>
#include <string_view>

#include "simulator/base/Log.h"
#include "simulator/base/Text.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/FileURLs.h"
#include "simulator/macos/MacFaults.h"

namespace simulator {

namespace {

/// Real bookmarks begin with its first four bytes.
constexpr std::string_view kBookmarkMark = "bookmark:";

bool exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

bool isFolder(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

CFDataRef makeData(std::string_view bytes) {
  return static_cast<CFDataRef>(
      theCFObjects().make(CFBytes{std::vector<std::uint8_t>(bytes.begin(), bytes.end())}));
}

}  // namespace

CFDataRef makeBookmark(const std::string& path) {
  return makeData(std::string(kBookmarkMark) + path);
}

std::optional<std::string> pathOfBookmark(CFDataRef bookmark) {
  const auto data = theCFObjects().get<CFBytes>(bookmark, "reading a bookmark");
  if (!data) return std::nullopt;
  const std::string bytes(data->bytes.begin(), data->bytes.end());
  return bytes.starts_with(kBookmarkMark) ? std::optional(bytes.substr(kBookmarkMark.size()))
                                          : std::nullopt;
}

}  // namespace simulator

using namespace simulator;

CFDataRef CFDataCreate(CFAllocatorRef, const UInt8* bytes, CFIndex length) {
  if (length < 0) {
    theLog().misuse(fmt::format("CFDataCreate: {} bytes", length));
    return nullptr;
  }
  if (failureOf(MacCall::kCFDataCreate)) return nullptr;
  return makeData({reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length)});
}

CFDataRef CFURLCreateBookmarkData(CFAllocatorRef, CFURLRef url, CFURLBookmarkCreationOptions,
                                  CFArrayRef, CFURLRef, CFErrorRef*) {
  if (failureOf(MacCall::kCFURLCreateBookmarkData)) return nullptr;
  const auto known = theCFObjects().get<CFUrl>(url, "CFURLCreateBookmarkData");
  if (!known) return nullptr;
  const std::string path = absolutePathOf(*known);
  return exists(path) ? makeBookmark(path) : nullptr;
}

CFIndex CFDataGetLength(CFDataRef data) {
  const auto known = theCFObjects().get<CFBytes>(data, "CFDataGetLength");
  return known ? static_cast<CFIndex>(known->bytes.size()) : 0;
}

const UInt8* CFDataGetBytePtr(CFDataRef data) {
  const UInt8* address = nullptr;
  theCFObjects().change<CFBytes>(data, "CFDataGetBytePtr",
                                 [&](CFBytes& known) { address = known.bytes.data(); });
  return address;
}

const CFStringRef kCFURLPathKey = CFSTR("NSURLPathKey");

// A simulated bookmark holds its path and nothing else.
CFTypeRef CFURLCreateResourcePropertyForKeyFromBookmarkData(CFAllocatorRef, CFStringRef key,
                                                            CFDataRef bookmark) {
  if (failureOf(MacCall::kCFURLCreateResourcePropertyForKeyFromBookmarkData)) return nullptr;
  const auto path = bookmark != nullptr ? pathOfBookmark(bookmark) : std::nullopt;
  if (key != kCFURLPathKey || !path || !isUtf8(*path)) return nullptr;
  return theCFObjects().make(CFText{utf16From(*path)});
}

CFURLRef CFURLCreateByResolvingBookmarkData(CFAllocatorRef, CFDataRef bookmark,
                                            CFURLBookmarkResolutionOptions, CFURLRef, CFArrayRef,
                                            Boolean* isStale, CFErrorRef*) {
  if (failureOf(MacCall::kCFURLCreateByResolvingBookmarkData)) return nullptr;
  const auto path = bookmark != nullptr ? pathOfBookmark(bookmark) : std::nullopt;
  if (!path || !exists(*path)) return nullptr;
  if (isStale != nullptr) *isStale = false;
  return makeFileURL(*path, isFolder(*path));
}
