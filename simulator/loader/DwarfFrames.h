// Entries of a Mach-O file's `__eh_frame` section: DWARF call-frame information for the few
// functions that the compact encodings cannot express.
#pragma once

#include <cstdint>

#include "simulator/loader/ByteReader.h"

namespace simulator {

/// One function's entry (FDE) together with the common entry (CIE) that it refers to. Pointers are
/// decoded to absolute addresses.
struct DwarfFrame {
  std::uint64_t start = 0;
  std::uint64_t size = 0;
  std::uint64_t personality = 0;  ///< address of the pointer to the routine; 0: none
  std::uint64_t lsda = 0;         ///< address of the language-specific data; 0: none
  std::int64_t codeAlignment = 1;
  std::int64_t dataAlignment = 1;
  Bytes commonInstructions;
  Bytes instructions;
};

/// Reads the entry at `offset` of the section, which lies in memory at `address`. The result refers
/// to bytes of `section`. A LoadError for a damaged entry, for forms that the platform does not
/// use, and if the return address is not in the column `returnAddress`, the processor's.
DwarfFrame readDwarfFrame(Bytes section, std::uint64_t offset, std::uint64_t address,
                          std::uint64_t returnAddress);

}  // namespace simulator
