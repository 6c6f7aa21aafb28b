// The plug-in as a loaded module.
#pragma once

#include <memory>
#include <string>

namespace simulator {

/// A plug-in in the process, known by its one exported function alone. Destroying it unloads the
/// module, which runs its static destructors.
class PluginModule {
 public:
  using Entry = int (*)(const char* caller, const char* selector, void* message);

  virtual ~PluginModule() = default;
  virtual Entry entry() const = 0;
};

/// Loads the module from a file. Throws `std::runtime_error` with one line that names the file and
/// the reason.
std::unique_ptr<PluginModule> loadPlugin(const std::string& file);

/// Makes the device framework's functions resolvable for modules loaded later. Throws like
/// `loadPlugin`.
void loadFramework(const std::string& file);

/// The files that stand beside the running program.
std::string besideProgram(const std::string& name);

}  // namespace simulator
