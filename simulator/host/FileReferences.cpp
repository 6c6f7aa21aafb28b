#include "simulator/host/FileReferences.h"

#include <string_view>

#include "simulator/host/HostErrors.h"
#include "simulator/host/HostState.h"

namespace simulator {

namespace {

/// Stands where a real alias has its head; the path follows.
constexpr std::string_view kAliasHead = "alias:";

Bookmarks& bookmarks() {
  static Bookmarks functions;
  return functions;
}

}  // namespace

AliasHandle makeAlias(const std::string& path, const char* maker) {
  return reinterpret_cast<AliasHandle>(
      hostState().handles.make(std::string(kAliasHead) + path, maker));
}

std::optional<std::string> pathOfAlias(AliasHandle alias, const char* procedure) {
  const std::lock_guard lock(hostState().mutex);
  try {
    std::string_view bytes = hostState().handles.bytes(reinterpret_cast<Handle>(alias), procedure);
    if (!bytes.starts_with(kAliasHead)) return std::nullopt;
    return std::string(bytes.substr(kAliasHead.size()));
  } catch (const HostError&) {
    return std::nullopt;
  }
}

void setBookmarks(Bookmarks functions) { bookmarks() = functions; }

CFDataRef makeBookmark(const std::string& path) {
  const CFDataRef bookmark = bookmarks().make ? bookmarks().make(path) : nullptr;
  if (bookmark == nullptr) throw HostError{paramErr};
  return bookmark;
}

std::string pathOfBookmark(CFDataRef bookmark) {
  if (bookmark == nullptr || bookmarks().path == nullptr) throw HostError{paramErr};
  const auto path = bookmarks().path(bookmark);
  if (!path) throw HostError{paramErr};
  return *path;
}

}  // namespace simulator
