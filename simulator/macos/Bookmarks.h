// Bookmarks: data in which a path stands behind a mark.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <optional>
#include <string>

namespace simulator {

/// A bookmark of `path`, with one reference, which the caller releases. The file need not exist: a
/// bookmark outlives the file that it was made of. [any-thread]
CFDataRef makeBookmark(const std::string& path);

/// The path that the bookmark was made of, none if the data are not a bookmark. [any-thread]
std::optional<std::string> pathOfBookmark(CFDataRef bookmark);

}  // namespace simulator
