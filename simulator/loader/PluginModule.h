// Loads the plug-in and the device framework.
#pragma once

#include <memory>
#include <string>

namespace simulator {

/// A loaded plug-in, reached only through its entry point. The destructor unloads the module, which
/// runs its static destructors.
class PluginModule {
 public:
  using Entry = int (*)(const char* caller, const char* selector, void* message);

  virtual ~PluginModule() = default;
  virtual Entry entry() const = 0;
};

/// Loads a plug-in: a Linux module, a Mac bundle's folder or a Mach-O file. Throws
/// `std::runtime_error` with one line that names the file and the reason.
std::unique_ptr<PluginModule> loadPlugin(const std::string& file);

/// Makes the device framework's functions resolvable for modules loaded later. Throws like
/// `loadPlugin`.
void loadFramework(const std::string& file);

/// The path of a file in the running program's folder.
std::string besideProgram(const std::string& name);

}  // namespace simulator
