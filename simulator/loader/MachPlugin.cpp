#include "simulator/loader/MachPlugin.h"

#include <fmt/format.h>

#include <memory>

#include "simulator/loader/BundleFolder.h"
#include "simulator/loader/FileKind.h"
#include "simulator/loader/MachImage.h"

// Provided by the leak checker if one is built in.
extern "C" void __lsan_do_leak_check() __attribute__((weak));

namespace simulator {

namespace {

class MachPlugin : public PluginModule {
 public:
  explicit MachPlugin(const std::filesystem::path& file)
      : image_(MachImage::load(file, SimulatedMac())) {
    entry_ = reinterpret_cast<Entry>(image_->symbol("AutoPluginMain"));
    if (entry_ == nullptr) throw LoadError("exports no AutoPluginMain");
  }

  ~MachPlugin() override {
    // After the image is unmapped, blocks that its statics point to would count as leaked.
    if (__lsan_do_leak_check != nullptr) __lsan_do_leak_check();
  }

  Entry entry() const override { return entry_; }

 private:
  std::unique_ptr<MachImage> image_;
  Entry entry_ = nullptr;
};

}  // namespace

std::filesystem::path machFileOf(const std::filesystem::path& path) {
  return std::filesystem::is_directory(path) ? binaryOfBundle(path) : path;
}

bool isMacPlugin(const std::filesystem::path& path) {
  if (std::filesystem::is_directory(path)) return true;
  const FileFormat format = formatOf(beginningOf(path));
  return format == FileFormat::kMachO || format == FileFormat::kUniversal;
}

std::unique_ptr<PluginModule> loadMacPlugin(const std::filesystem::path& path) {
  const std::filesystem::path binary = machFileOf(path);
  try {
    return std::make_unique<MachPlugin>(binary);
  } catch (const LoadError& error) {
    throw LoadError(fmt::format("{}: {}", binary.string(), error.what()));
  }
}

}  // namespace simulator
