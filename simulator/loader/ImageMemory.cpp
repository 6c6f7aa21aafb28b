#include "simulator/loader/ImageMemory.h"

#include <fmt/format.h>
#include <sys/mman.h>

#include <cstring>

// Provided by the leak checker if one is built in. It must search the image's memory, which may
// hold the only pointer to a block.
extern "C" void __lsan_register_root_region(const void* begin, std::size_t size)
    __attribute__((weak));
extern "C" void __lsan_unregister_root_region(const void* begin, std::size_t size)
    __attribute__((weak));

namespace simulator {

namespace {

// On arm64, the highest bit of the pointer to a type's name says that other files may have the
// type, too. This system's C++ library compares the names of types in any case, and needs the plain
// pointer.
constexpr std::uint64_t kSharedTypeName = std::uint64_t{1} << 63;

}  // namespace

ImageMemory::ImageMemory(const MachFile& file) : file_(file), size_(file.imageSize()) {
  void* const space = mmap(nullptr, size_, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (space == MAP_FAILED)
    throw LoadError(fmt::format("no memory for an image of {} bytes", size_));
  base_ = static_cast<std::byte*>(space);
  if (__lsan_register_root_region != nullptr) __lsan_register_root_region(base_, size_);
  for (const Segment& segment : file.segments()) {
    const Bytes contents = file.contents(segment);
    if (!contents.empty()) std::memcpy(base_ + segment.address, contents.data(), contents.size());
  }
}

ImageMemory::~ImageMemory() {
  if (__lsan_unregister_root_region != nullptr) __lsan_unregister_root_region(base_, size_);
  munmap(base_, size_);
}

Bytes ImageMemory::at(std::uint64_t offset, std::size_t size, std::string_view what) const {
  if (offset > size_ || size > size_ - offset) {
    throw LoadError(fmt::format("{} lies outside the image (at {:#x})", what, offset));
  }
  return {base_ + offset, size};
}

bool ImageMemory::isExecutable(std::uint64_t offset) const {
  for (const Segment& segment : file_.segments()) {
    if (offset >= segment.address && offset - segment.address < segment.fileSize) {
      return (segment.protection & PROT_EXEC) != 0;
    }
  }
  return false;
}

void ImageMemory::rebase(const FixupPlace& place) {
  std::byte* const target = word(place);
  std::uint64_t value;
  std::memcpy(&value, target, sizeof value);
  if (file_.processor().type == mach::kArm64.type) value &= ~kSharedTypeName;
  // Code may hold a pointer to one past the end.
  if (value > size_)
    throw LoadError(fmt::format("a rebased pointer ({:#x}) leaves the image", value));
  value += reinterpret_cast<std::uintptr_t>(base_);
  std::memcpy(target, &value, sizeof value);
}

void ImageMemory::writePointer(const FixupPlace& place, std::uint64_t value) {
  std::memcpy(word(place), &value, sizeof value);
}

void ImageMemory::protect() {
  for (const Segment& segment : file_.segments()) {
    // Processors other than Intel's fetch instructions through a cache that does not see the
    // writes.
    if ((segment.protection & PROT_EXEC) != 0) {
      auto* const begin = reinterpret_cast<char*>(base_ + segment.address);
      __builtin___clear_cache(begin, begin + segment.size);
    }
    const int dropped = segment.readOnlyAfterFixups ? PROT_WRITE : 0;
    if (mprotect(base_ + segment.address, segment.size, segment.protection & ~dropped) != 0) {
      throw LoadError(fmt::format("segment {} cannot be protected", segment.name));
    }
  }
}

std::byte* ImageMemory::word(const FixupPlace& place) const {
  if (place.segment >= file_.segments().size()) {
    throw LoadError(fmt::format("a fixup names segment {}, which is not there", place.segment));
  }
  const Segment& segment = file_.segments()[place.segment];
  if ((segment.protection & PROT_WRITE) == 0) {
    throw LoadError(fmt::format("a fixup in {}, which is not writable", segment.name));
  }
  if (segment.size < sizeof(std::uint64_t) || place.offset > segment.size - sizeof(std::uint64_t)) {
    throw LoadError(fmt::format("a fixup lies outside {} (at {:#x})", segment.name, place.offset));
  }
  return base_ + segment.address + place.offset;
}

}  // namespace simulator
