// Bookmarks: data from which a file can be found. A simulated one is a fixed prefix and a path.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <optional>
#include <string>

namespace simulator {

/// Makes a bookmark of `path`, which need not exist: a real bookmark can outlive its file. The
/// caller releases it. [any-thread]
CFDataRef makeBookmark(const std::string& path);

/// The path from which the bookmark was made; nullopt if the data are not a bookmark. Reports a
/// misuse if `bookmark` is not a live data object. [any-thread]
std::optional<std::string> pathOfBookmark(CFDataRef bookmark);

}  // namespace simulator
