// A plug-in for the Mac, loaded into a process of this system as the Mac's own loader would.
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

/// One loaded image. Its code runs natively; its imports are bound to `SystemLibraries`; exceptions
/// pass through its frames. All members [main-thread].
class MachImage {
 public:
  /// Maps the file, applies its rebases and binds and makes its frames known to the unwinder, but
  /// runs nothing of it. A LoadError names what the file lacks, what is wrong with it or what of
  /// it this loader does not know; a library or symbol that is missing is named as on the platform.
  /// `file` may hold any bytes.
  static std::unique_ptr<MachImage> prepare(MachFile file, const SystemLibraries& libraries,
                                            std::string name);

  /// Reads and prepares the file and runs its initialisers.
  static std::unique_ptr<MachImage> load(const std::filesystem::path& path,
                                         const SystemLibraries& libraries);

  /// Runs what the initialisers registered for the end, last first, and unmaps the image. An image
  /// that is still there when the process exits runs it then.
  /// REQUIRES: no thread is inside the image's code, and nobody keeps a pointer into it.
  ~MachImage();
  MachImage(const MachImage&) = delete;
  MachImage& operator=(const MachImage&) = delete;

  /// The address of an exported symbol (its C name); null where there is none.
  void* symbol(std::string_view name) const;

  /// All exported symbols, with their leading underscores, and their offsets in the image.
  const std::map<std::string, std::uint64_t>& exports() const { return exports_; }

  /// Runs the initialisers, once. A prepared image can be used only after this.
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
