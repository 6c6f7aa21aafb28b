#include "simulator/loader/MachPlugin.h"

#include <fmt/format.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>

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

std::uint32_t firstWord(const std::filesystem::path& path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                             &std::fclose);
  std::uint32_t word = 0;
  if (!file || std::fread(&word, sizeof word, 1, file.get()) != 1) return 0;
  return word;
}

}  // namespace

std::filesystem::path machFileOf(const std::filesystem::path& path) {
  if (!std::filesystem::is_directory(path)) return path;
  const std::filesystem::path bundle = path.has_filename() ? path : path.parent_path();
  return bundle / "Contents" / "MacOS" / bundle.stem();
}

bool isMacPlugin(const std::filesystem::path& path) {
  const std::uint32_t word = firstWord(machFileOf(path));
  return std::filesystem::is_directory(path) || word == mach::kMagic64 ||
         word == mach::kUniversalMagicSwapped;
}

std::unique_ptr<PluginModule> loadMacPlugin(const std::filesystem::path& path) {
  try {
    return std::make_unique<MachPlugin>(machFileOf(path));
  } catch (const LoadError& error) {
    throw std::runtime_error(fmt::format("{}: {}", path.string(), error.what()));
  }
}

}  // namespace simulator
