// The unwinder of this system reads DWARF call-frame tables. This makes one that says of a loaded
// image what the image's own tables say, so that exceptions pass through its functions.
#pragma once

#include <cstddef>
#include <vector>

#include "simulator/loader/ImageMemory.h"
#include "simulator/loader/MachFile.h"

namespace simulator {

/// A table in the form of an `.eh_frame` section, ended by an empty entry, all pointers absolute.
/// Empty where the image has no unwind table. REQUIRES: the image's fixups are applied (the
/// personality routines are read from its memory). A LoadError for what cannot be expressed.
std::vector<std::byte> makeEhFrame(const MachFile& file, const ImageMemory& memory);

/// Keeps a table known to the unwinder. [any-thread]
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
