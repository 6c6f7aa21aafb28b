// Files inside host objects: as the platform's aliases and bookmarks.
#pragma once

#include <Carbon/Carbon.h>

#include <optional>
#include <string>

namespace simulator {

/// An alias of `path` in a handle of the host. `maker` as in MemoryHandles::make.
AliasHandle makeAlias(const std::string& path, const char* maker);

/// The path behind an alias that `makeAlias` made and that is alive; none for any other handle.
/// A handle that is not alive is a misuse by `procedure`.
std::optional<std::string> pathOfAlias(AliasHandle alias, const char* procedure);

/// How the simulated platform makes bookmarks and looks into them; both null until it says so.
struct Bookmarks {
  /// Data with one reference, which the caller releases.
  CFDataRef (*make)(const std::string& path) = nullptr;
  /// The path that the bookmark was made of, none where the data are no bookmark.
  std::optional<std::string> (*path)(CFDataRef bookmark) = nullptr;
};

/// Tells the host how to go about bookmarks. Without it, bookmark items can be neither put nor
/// read: paramErr. [main-thread]
void setBookmarks(Bookmarks bookmarks);

/// For the suites: the above, or HostError{paramErr}.
CFDataRef makeBookmark(const std::string& path);
std::string pathOfBookmark(CFDataRef bookmark);

}  // namespace simulator
