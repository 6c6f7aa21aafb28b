// An image's exported symbols, stored as a prefix tree in its link data.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "simulator/loader/ByteReader.h"

namespace simulator {

/// The kinds of exports that `Export::flags` tells apart (EXPORT_SYMBOL_FLAGS_… in
/// <mach-o/loader.h>).
enum : std::uint64_t {
  kExportThreadLocal = 0x1,
  kExportAbsolute = 0x2,
  kExportWeakDefinition = 0x4,
  kExportFromOtherLibrary = 0x8,
  kExportResolved = 0x10
};

struct Export {
  std::string name;  ///< with its leading underscore
  std::uint64_t flags = 0;
  /// From the image's start. Absolute: the value. From another library: its ordinal, from 1.
  std::uint64_t offset = 0;
  std::string importedName;  ///< from another library: the name there; empty if it is the same
};

/// Reads every exported symbol in the order of the tree. A LoadError for a damaged tree and for
/// flags that are not published.
std::vector<Export> readExports(Bytes trie);

/// The exported symbols and their offsets. A LoadError also for an export that the loader does not
/// support: all but addresses in the image, weak definitions included.
std::map<std::string, std::uint64_t> readExportTrie(Bytes trie);

}  // namespace simulator
