// What the simulated host's suites need of the simulated Mac's files, on a real Mac: aliases and
// bookmarks that only the suites themselves read.
#include <CoreFoundation/CoreFoundation.h>

#include <string_view>

#include "simulator/base/CallError.h"
#include "simulator/macos/Aliases.h"
#include "simulator/macos/Bookmarks.h"
#include "simulator/macos/MemoryHandles.h"

namespace simulator {

namespace {

constexpr std::string_view kAliasHead = "alias:";
constexpr std::string_view kBookmarkHead = "bookmark:";

std::optional<std::string> withoutHead(const std::string& bytes, std::string_view head) {
  if (!bytes.starts_with(head)) return std::nullopt;
  return bytes.substr(head.size());
}

}  // namespace

AliasHandle makeAlias(const std::string& path, const char* maker) {
  const std::string bytes = std::string(kAliasHead) + path;
  return reinterpret_cast<AliasHandle>(theMemoryHandles().make(bytes, maker));
}

std::optional<std::string> pathOfAlias(AliasHandle alias, const char* procedure) {
  try {
    const auto handle = reinterpret_cast<Handle>(alias);
    return withoutHead(theMemoryHandles().bytes(handle, procedure), kAliasHead);
  } catch (const CallError&) {
    return std::nullopt;
  }
}

CFDataRef makeBookmark(const std::string& path) {
  const std::string bytes = std::string(kBookmarkHead) + path;
  return CFDataCreate(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(bytes.data()),
                      static_cast<CFIndex>(bytes.size()));
}

std::optional<std::string> pathOfBookmark(CFDataRef bookmark) {
  if (bookmark == nullptr) return std::nullopt;
  const auto* bytes = reinterpret_cast<const char*>(CFDataGetBytePtr(bookmark));
  return withoutHead({bytes, static_cast<std::size_t>(CFDataGetLength(bookmark))}, kBookmarkHead);
}

}  // namespace simulator
