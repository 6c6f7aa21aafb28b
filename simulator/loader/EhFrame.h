// Converts a loaded image's unwind tables to the DWARF call-frame table that this system's unwinder
// reads, which lets exceptions pass through the image's functions.
#pragma once

#include <cstddef>
#include <vector>

#include "simulator/loader/ImageMemory.h"
#include "simulator/loader/MachFile.h"

namespace simulator {

/// Makes the table in the form of an `.eh_frame` section: ended by an empty entry, all pointers
/// absolute. Empty if the image has no unwind table. A LoadError if the image's tables are damaged
/// or cannot be converted.
/// REQUIRES: the image's fixups are applied (the personality routines are read from its memory).
std::vector<std::byte> makeEhFrame(const MachFile& file, const ImageMemory& memory);

/// Registers a table, if it is not empty, with the unwinder for its own lifetime. [any-thread]
class EhFrameRegistration {
 public:
  explicit EhFrameRegistration(std::vector<std::byte> table);
  ~EhFrameRegistration();
  EhFrameRegistration(const EhFrameRegistration&) = delete;
  EhFrameRegistration& operator=(const EhFrameRegistration&) = delete;

 private:
  std::vector<std::byte> table_;
};

}  // namespace simulator
