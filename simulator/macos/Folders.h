// The folders of the simulated Mac's user, which are real folders below a chosen home folder.
#pragma once

#include <CoreServices/CoreServices.h>

#include <filesystem>
#include <optional>
#include <string>

namespace simulator {

/// Sets the user's home folder. Until then, no folder is found. [main-thread]
void setHomeFolder(std::filesystem::path home);

/// The home folder; nullopt until it is set. [any-thread]
std::optional<std::filesystem::path> homeFolder();

/// The preferences folder of the user with this home folder. [any-thread]
std::filesystem::path preferencesFolder(const std::filesystem::path& home);

/// A reference to the file or folder at `path`, which need not exist. [any-thread]
FSRef refOfPath(const std::string& path);

/// The path to which a reference refers; nullopt if `refOfPath` did not make it. [any-thread]
std::optional<std::string> pathOfRef(const FSRef& ref);

}  // namespace simulator
