// The pages of a loaded image.
#pragma once

#include <cstddef>
#include <cstdint>

#include "simulator/loader/DyldOpcodes.h"
#include "simulator/loader/MachFile.h"

namespace simulator {

/// The address space of one image with its segments' contents in place. Until `protect` is called,
/// all of it is writable and none of it executable. The destructor unmaps it.
class ImageMemory {
 public:
  /// Reserves the space and copies the segments in. A LoadError if the system has no memory.
  /// REQUIRES: `file` outlives the object.
  explicit ImageMemory(const MachFile& file);
  ~ImageMemory();
  ImageMemory(const ImageMemory&) = delete;
  ImageMemory& operator=(const ImageMemory&) = delete;

  std::byte* base() const { return base_; }
  std::size_t size() const { return size_; }

  /// `size` bytes of the image from `offset`; a LoadError that names `what` if they lie outside.
  Bytes at(std::uint64_t offset, std::size_t size, std::string_view what) const;

  /// Whether the offset is executable once the image is protected.
  bool isExecutable(std::uint64_t offset) const;

  /// Adds the image's base to the word, which holds an address relative to the image's start.
  /// A LoadError if that address or the word lies outside, or if the word is not writable.
  void rebase(const FixupPlace& place);

  /// Stores a word; a LoadError if it lies outside or is not writable.
  void writePointer(const FixupPlace& place, std::uint64_t value);

  /// Sets each segment's protection as the file asks. A LoadError if the system refuses.
  void protect();

 private:
  std::byte* word(const FixupPlace& place) const;

  const MachFile& file_;
  std::byte* base_ = nullptr;
  std::size_t size_;
};

}  // namespace simulator
