// Loads a plug-in built for the Mac as a module of the simulated host.
#pragma once

#include <filesystem>
#include <memory>

#include "simulator/loader/PluginModule.h"

namespace simulator {

/// The Mach-O file that a path names: the one inside if the path is a bundle's folder, else the
/// path itself, whether or not it exists.
std::filesystem::path machFileOf(const std::filesystem::path& path);

/// Whether the path is a folder, taken for a bundle, or a file that begins like a Mach-O file.
bool isMacPlugin(const std::filesystem::path& path);

/// Loads the plug-in against the simulated Mac. Throws `std::runtime_error` with one line that
/// names the file and the reason.
std::unique_ptr<PluginModule> loadMacPlugin(const std::filesystem::path& path);

}  // namespace simulator
