// The dynamic linker's opcode streams: which words of an image to move with it, and which to fill
// with the addresses of symbols. Published in <mach-o/loader.h> (REBASE_OPCODE_…, BIND_OPCODE_…).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/loader/ByteReader.h"

namespace simulator {

/// One word: an offset into a segment. The offset is as the stream gave it; whoever writes to it
/// checks it against the segment.
struct FixupPlace {
  std::size_t segment = 0;
  std::uint64_t offset = 0;
};

/// Ordinals that stand for no library.
enum : std::int64_t {
  kOrdinalSelf = 0,
  kOrdinalMainExecutable = -1,
  kOrdinalFlatLookup = -2,
  kOrdinalWeakLookup = -3
};

/// One word that takes the address of a symbol plus `addend`.
struct Bind {
  FixupPlace place;
  std::string symbol;
  std::int64_t ordinal = 0;  ///< of the library, from 1; or one of the above
  std::int64_t addend = 0;
  bool weakImport = false;        ///< null where it is missing
  bool strongDefinition = false;  ///< of weak binds: only says that the image defines it; no place
};

/// The words of a rebase stream, at most `limit` of them. A LoadError names what is not understood.
std::vector<FixupPlace> readRebases(Bytes opcodes, std::size_t limit);

enum class BindKind { kRegular, kWeak, kLazy };

/// The words of a bind stream, at most `limit` of them.
std::vector<Bind> readBinds(Bytes opcodes, BindKind kind, std::size_t limit);

}  // namespace simulator
