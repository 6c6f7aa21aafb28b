// The dynamic linker's opcode streams: which words of an image to rebase and which to bind to
// symbols. Published in <mach-o/loader.h> (REBASE_OPCODE_…, BIND_OPCODE_…).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/loader/ByteReader.h"

namespace simulator {

/// The place of one word: a segment's index and an offset into the segment, as the stream gives
/// them. Check both against the image before writing there.
struct FixupPlace {
  std::size_t segment = 0;
  std::uint64_t offset = 0;
};

/// Special values of `Bind::ordinal`.
enum : std::int64_t {
  kOrdinalSelf = 0,
  kOrdinalMainExecutable = -1,
  kOrdinalFlatLookup = -2,
  kOrdinalWeakLookup = -3
};

/// A word to fill with a symbol's address plus `addend`.
struct Bind {
  FixupPlace place;
  std::string symbol;
  std::int64_t ordinal = 0;  ///< 1-based index of the library, or a special value
  std::int64_t addend = 0;
  bool weakImport = false;        ///< null if the symbol is missing
  bool strongDefinition = false;  ///< weak binds: the image defines the symbol; no `place`
};

/// Reads the words of a rebase stream. A LoadError for an unknown opcode, a damaged stream, or more
/// than `limit` words.
std::vector<FixupPlace> readRebases(Bytes opcodes, std::size_t limit);

enum class BindKind { kRegular, kWeak, kLazy };

/// Reads the words of a bind stream. Errors as for `readRebases`.
std::vector<Bind> readBinds(Bytes opcodes, BindKind kind, std::size_t limit);

}  // namespace simulator
