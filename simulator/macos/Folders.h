// The folders of the simulated Mac's user, kept below a folder of this machine.
#pragma once

#include <CoreServices/CoreServices.h>

#include <filesystem>
#include <optional>
#include <string>

namespace simulator {

/// Where the user's home folder lies. Until it is set, no folder is found. [main-thread]
void setHomeFolder(std::filesystem::path home);

/// The home folder, none until it is set. [any-thread]
std::optional<std::filesystem::path> homeFolder();

/// Where the user's preferences lie below a home folder.
std::filesystem::path preferencesFolder(const std::filesystem::path& home);

/// A reference to the file or folder at that path. [any-thread]
FSRef refOfPath(const std::string& path);

/// The path that a reference stands for, none for one that was never given out.
std::optional<std::string> pathOfRef(const FSRef& ref);

}  // namespace simulator
