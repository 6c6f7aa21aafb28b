#include "simulator/loader/PluginModule.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <filesystem>
#include <stdexcept>

#include "simulator/loader/FileKind.h"
#include "simulator/loader/MachPlugin.h"
#include "simulator/loader/OwnProcessor.h"

// Provided by the leak checker if one is built in.
extern "C" void __lsan_do_leak_check() __attribute__((weak));

namespace simulator {

namespace {

void* openModule(const std::string& file, int flags) {
  void* library = dlopen(file.c_str(), flags);
  if (library == nullptr) throw std::runtime_error(dlerror());
  return library;
}

class SharedObject : public PluginModule {
 public:
  explicit SharedObject(const std::string& file)
      : library_(openModule(file, RTLD_NOW | RTLD_LOCAL)) {
    entry_ = reinterpret_cast<Entry>(dlsym(library_, "AutoPluginMain"));
    if (entry_ == nullptr) {
      dlclose(library_);
      throw std::runtime_error(fmt::format("{}: exports no AutoPluginMain", file));
    }
  }

  ~SharedObject() override {
    // After the module is unloaded, blocks that its statics point to would count as leaked.
    if (__lsan_do_leak_check != nullptr) __lsan_do_leak_check();
    dlclose(library_);
  }

  Entry entry() const override { return entry_; }

 private:
  void* library_;
  Entry entry_;
};

// dlopen would call any other file an invalid ELF file.
void requireModule(const std::string& file) {
  const std::vector<std::byte> beginning = beginningOf(file);
  const std::string module = "an ELF file for " + processorName(ownProcessor());
  if (formatOf(beginning) == FileFormat::kElf && describeFile(beginning) == module) return;
  throw std::runtime_error(
      fmt::format("{} is {}; a Mac bundle's folder, a Mach-O file or a Linux module ({}) is needed",
                  file, describeFile(beginning), module));
}

}  // namespace

std::unique_ptr<PluginModule> loadPlugin(const std::string& file) {
  if (!std::filesystem::exists(file)) throw std::runtime_error(file + " is not there");
  if (isMacPlugin(file)) return loadMacPlugin(file);
  requireModule(file);
  // dlopen looks for a name without a slash in the system's library folders.
  return std::make_unique<SharedObject>(std::filesystem::absolute(file).string());
}

void loadFramework(const std::string& file) { openModule(file, RTLD_NOW | RTLD_GLOBAL); }

std::string besideProgram(const std::string& name) {
  return std::filesystem::read_symlink("/proc/self/exe").replace_filename(name).string();
}

}  // namespace simulator
