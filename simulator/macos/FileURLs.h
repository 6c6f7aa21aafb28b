// URLs of files and folders.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <string>
#include <string_view>

#include "simulator/macos/CFObjects.h"

namespace simulator {

/// Makes the URL of the file or folder at `path`, with one reference that the caller releases. A
/// relative path starts from the working directory. The path keeps its "." and ".." and its doubled
/// slashes, and loses those at its end. REQUIRES: `path` is not empty. [any-thread]
CFURLRef makeFileURL(std::string_view path, bool isDirectory);

/// The absolute path of a URL, without a slash at its end. "." and ".." are resolved only in a
/// relative path. [any-thread]
std::string absolutePathOf(const CFUrl& url);

}  // namespace simulator
