// A bundle's folder: its description Contents/Info.plist, and the binary that this names.
#pragma once

#include <filesystem>

#include "simulator/base/Json.h"

namespace simulator {

/// Reads a property list in the XML form as JSON: a dict is an object, a key that stands twice has
/// its last value; integer, real, true and false are numbers and booleans, string and data texts,
/// and a date is an object with the field "date". A LoadError that names the file and the place if
/// it cannot be read, is binary, or is not a property list. [any-thread]
Json readPropertyList(const std::filesystem::path& file);

/// The file that the bundle's folder is loaded from: Contents/MacOS/NAME. NAME is
/// CFBundleExecutable of Info.plist; without that file or key, it is the folder's name without its
/// extension. A LoadError if Info.plist cannot be read, the key's value is not the name of a file,
/// or there is no such binary. [any-thread]
std::filesystem::path binaryOfBundle(const std::filesystem::path& folder);

}  // namespace simulator
