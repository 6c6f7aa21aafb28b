// The compact unwind table of an image: how to leave each of its functions. The encodings are
// those published in <mach-o/compact_unwind_encoding.h>.
#pragma once

#include <cstdint>
#include <vector>

#include "simulator/loader/ByteReader.h"

namespace simulator {

/// What the table says of one run of code. Offsets count from the image's start.
struct UnwindEntry {
  std::uint32_t start = 0;
  std::uint32_t end = 0;
  std::uint32_t encoding = 0;
  std::uint32_t personality = 0;  ///< offset of the pointer to it; 0: none
  std::uint32_t lsda = 0;         ///< offset of the language's own data; 0: none
};

/// The entries of an `__unwind_info` section in ascending order, without those that say nothing.
/// A LoadError for a damaged table or one of another version.
std::vector<UnwindEntry> readUnwindInfo(Bytes section);

/// How a function keeps its frame.
enum class FrameKind { kBasePointer, kStackImmediate, kStackIndirect, kDwarf };

/// A register of the caller and where it was saved: below the canonical frame address, which is
/// the stack pointer before the call's return address was pushed.
struct SavedRegister {
  int number = 0;           ///< as DWARF counts on x86-64
  std::uint32_t below = 0;  ///< bytes below the canonical frame address

  bool operator==(const SavedRegister&) const = default;
};

/// An encoding taken apart.
struct Frame {
  FrameKind kind = FrameKind::kBasePointer;
  /// kStackImmediate: from the stack pointer up to the canonical frame address.
  std::uint32_t stackSize = 0;
  /// kStackIndirect: the size stands in the function's code at this offset from its start, and
  /// `stackAdjust` more bytes are to be added.
  std::uint32_t sizeOffset = 0;
  std::uint32_t stackAdjust = 0;
  /// kDwarf: where in the `__eh_frame` section the function is described.
  std::uint32_t dwarfOffset = 0;
  /// In the order in which they lie, upwards.
  std::vector<int> registers;
  std::uint32_t firstRegisterBelow = 0;  ///< kBasePointer: of the first of them

  /// Where each register was saved, once the stack size is known.
  std::vector<SavedRegister> savedRegisters() const;
};

/// Takes an encoding apart; a LoadError for a kind of frame that does not exist.
Frame decodeFrame(std::uint32_t encoding);

}  // namespace simulator
