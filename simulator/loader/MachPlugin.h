// Loads a plug-in built for the Mac as a module of the simulated host.
#pragma once

#include <filesystem>
#include <memory>

#include "simulator/loader/PluginModule.h"

namespace simulator {

/// The Mach-O file that a path names: that of `binaryOfBundle` if the path is a folder, which may
/// throw; else the path itself, whether or not it exists.
std::filesystem::path machFileOf(const std::filesystem::path& path);

/// Whether the path is a folder, taken for a bundle, or a file that begins like a Mach-O file of
/// any word size and byte order, or like a universal file.
bool isMacPlugin(const std::filesystem::path& path);

/// Loads the plug-in against the simulated Mac. Throws `std::runtime_error` with one line that
/// names the file and the reason.
std::unique_ptr<PluginModule> loadMacPlugin(const std::filesystem::path& path);

}  // namespace simulator
