// A plug-in built for the Mac as a module of the simulated host.
#pragma once

#include <filesystem>
#include <memory>

#include "simulator/loader/PluginModule.h"

namespace simulator {

/// The Mach-O file that a path names: the file itself, or the one inside where it is a bundle's
/// folder. What does not exist stays as it is.
std::filesystem::path machFileOf(const std::filesystem::path& path);

/// Whether the path names a bundle's folder or begins as a Mach-O file does.
bool isMacPlugin(const std::filesystem::path& path);

/// Loads it against the simulated Mac. Throws `std::runtime_error` with one line that names the
/// file and the reason.
std::unique_ptr<PluginModule> loadMacPlugin(const std::filesystem::path& path);

}  // namespace simulator
