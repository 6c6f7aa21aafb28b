// Reads an image's compact unwind table. The encodings, which differ between the processors, are
// published in <mach-o/compact_unwind_encoding.h>.
#pragma once

#include <cstdint>
#include <vector>

#include "simulator/loader/ByteReader.h"
#include "simulator/loader/MachFormat.h"

namespace simulator {

/// The encoding of one range of code. Offsets count from the image's start.
struct UnwindEntry {
  std::uint32_t start = 0;
  std::uint32_t end = 0;
  std::uint32_t encoding = 0;
  std::uint32_t personality = 0;  ///< offset of the pointer to the routine; 0: none
  std::uint32_t lsda = 0;         ///< offset of the language-specific data; 0: none
};

/// Reads the entries of an `__unwind_info` section in ascending order; those without an encoding
/// are left out. A LoadError for a damaged table or an unknown version.
std::vector<UnwindEntry> readUnwindInfo(Bytes section);

/// How to find a function's frame.
enum class FrameKind { kBasePointer, kStackImmediate, kStackIndirect, kDwarf };

/// A caller's register and where it was saved, relative to the canonical frame address: the
/// caller's stack pointer before the call.
struct SavedRegister {
  int number = 0;           ///< the processor's DWARF number
  std::uint32_t below = 0;  ///< bytes below the canonical frame address

  bool operator==(const SavedRegister&) const = default;
};

/// A decoded encoding.
struct Frame {
  FrameKind kind = FrameKind::kBasePointer;
  /// kStackImmediate: bytes from the stack pointer up to the canonical frame address.
  std::uint32_t stackSize = 0;
  /// kStackIndirect: offset from the function's start of the 32-bit stack size in its code, to
  /// which `stackAdjust` bytes are added.
  std::uint32_t sizeOffset = 0;
  std::uint32_t stackAdjust = 0;
  /// kDwarf: offset of the function's entry in the `__eh_frame` section.
  std::uint32_t dwarfOffset = 0;
  /// DWARF numbers of the saved registers, from the lowest address up; -1 is a gap.
  std::vector<int> registers;
  std::uint32_t firstRegisterBelow = 0;  ///< `below` of the first
  std::uint32_t reserved = 0;            ///< bytes below the canonical frame address for others

  /// Where each register was saved. A LoadError if that is above the frame.
  std::vector<SavedRegister> savedRegisters() const;
};

/// Decodes an encoding in code for the processor. A LoadError if its mode, registers or their
/// permutation are invalid.
/// REQUIRES: `processor` is of the type of x86_64 or of arm64.
Frame decodeFrame(std::uint32_t encoding, mach::Processor processor);

}  // namespace simulator
