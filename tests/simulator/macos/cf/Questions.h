// Questions that every Core Foundation answers through its public functions.
#pragma once

#include <string>
#include <vector>

/// Each function asks the Core Foundation of this program and returns a line for each length,
/// character, string or path. README.md describes the lines.
std::vector<std::string> answersAboutLengths();
std::vector<std::string> answersAboutMacRoman();
std::vector<std::string> answersAboutStrings();
/// REQUIRES: the working directory is kWorkingFolder.
std::vector<std::string> answersAboutPaths();

/// A folder that exists on every system; relative paths are resolved against it.
inline constexpr char kWorkingFolder[] = "/usr/share";
