// Loads a Mac plug-in into a Linux process as the Mac's own loader would.
//
//   const auto image = MachImage::load("MrvPhotoshop", SimulatedMac());
//   auto* const entry = reinterpret_cast<EntryPoint*>(image->symbol("AutoPluginMain"));
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/loader/EhFrame.h"
#include "simulator/loader/ImageMemory.h"
#include "simulator/loader/MachFile.h"
#include "simulator/loader/SystemLibraries.h"

namespace simulator {

/// One loaded image. Its code runs natively, its imports are bound to `SystemLibraries`, and
/// exceptions can pass through its frames. All members [main-thread].
class MachImage {
 public:
  /// Maps the file, applies its rebases and binds and registers its frames with the unwinder, but
  /// runs none of its code. `name` stands for the file in errors. A LoadError names what is
  /// missing, damaged or not supported; for a missing library or symbol it has the platform's
  /// wording.
  static std::unique_ptr<MachImage> prepare(MachFile file, const SystemLibraries& libraries,
                                            std::string name);

  /// Reads and prepares the file, then runs its initialisers. Errors as for `prepare`.
  static std::unique_ptr<MachImage> load(const std::filesystem::path& path,
                                         const SystemLibraries& libraries);

  /// If the image was initialised, runs the exit functions that it registered and its terminators,
  /// each last first; then unmaps it. If an image still exists when the process exits, the
  /// registered functions run then.
  /// REQUIRES: no thread runs the image's code, and no pointer into it is used afterwards.
  ~MachImage();
  MachImage(const MachImage&) = delete;
  MachImage& operator=(const MachImage&) = delete;

  /// The address of an exported symbol, given by its C name; null if there is none.
  void* symbol(std::string_view name) const;

  /// All exported symbols, with their leading underscores, and their offsets in the image.
  const std::map<std::string, std::uint64_t>& exports() const { return exports_; }

  /// Runs the initialisers; later calls do nothing. Call this before using a prepared image.
  void initialise();

  const MachFile& file() const { return *file_; }

 private:
  MachImage(std::unique_ptr<MachFile> file, std::string name);

  void applyFixups(const SystemLibraries& libraries);
  void checkInitialisers() const;
  std::size_t fixupLimit() const;

  std::unique_ptr<MachFile> file_;
  std::string name_;
  ImageMemory memory_;
  std::map<std::string, std::uint64_t> exports_;
  std::optional<EhFrameRegistration> frames_;
  bool initialised_ = false;
};

}  // namespace simulator
