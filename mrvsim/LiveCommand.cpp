#include "mrvsim/LiveCommand.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <filesystem>
#include <stdexcept>

#include "simulator/loader/PluginModule.h"
#include "simulator/scenario/Wording.h"

namespace simulator {

int runLive(const LiveOptions& options) {
  const std::string module = besideProgram("MrvLive.so");
  if (!std::filesystem::exists(module)) {
    throw std::runtime_error("live: this program was built without a window");
  }
  void* const library = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    const std::string reason = dlerror();
    throw std::runtime_error(fmt::format("live: the library {} is missing or too old",
                                         printable(reason.substr(0, reason.find(':')))));
  }
  using Live = int (*)(const LiveOptions*);
  const auto live = reinterpret_cast<Live>(dlsym(library, "mrvLive"));
  return live(&options);
}

}  // namespace simulator
