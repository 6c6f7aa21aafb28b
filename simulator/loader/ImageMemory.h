// The pages of a loaded image.
#pragma once

#include <cstddef>
#include <cstdint>

#include "simulator/loader/DyldOpcodes.h"
#include "simulator/loader/MachFile.h"

namespace simulator {

/// Address space for one image, with its segments' contents in place. Until `protect` all of it is
/// writable and nothing of it can be run. Unmapped when it ends.
class ImageMemory {
 public:
  /// Reserves the space and copies the segments in. A LoadError where there is no space.
  explicit ImageMemory(const MachFile& file);
  ~ImageMemory();
  ImageMemory(const ImageMemory&) = delete;
  ImageMemory& operator=(const ImageMemory&) = delete;

  std::byte* base() const { return base_; }
  std::size_t size() const { return size_; }

  /// The image's bytes, `size` of them from `offset`; a LoadError where they do not lie inside.
  Bytes at(std::uint64_t offset, std::size_t size, std::string_view what) const;

  /// Whether code can be run at the offset once the image is protected.
  bool isExecutable(std::uint64_t offset) const;

  /// Adds the image's base to the word, which holds an address for an image at 0. The result has
  /// to lie inside the image.
  void rebase(const FixupPlace& place);

  void writePointer(const FixupPlace& place, std::uint64_t value);

  /// Gives each segment the protection that the file asks for.
  void protect();

 private:
  std::byte* word(const FixupPlace& place) const;

  const MachFile& file_;
  std::byte* base_ = nullptr;
  std::size_t size_;
};

}  // namespace simulator
