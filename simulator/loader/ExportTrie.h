// An image's exported symbols, stored as a prefix tree in its link data.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "simulator/loader/ByteReader.h"

namespace simulator {

/// Reads every exported symbol (with its leading underscore) and its offset from the image's start.
/// A LoadError for a damaged tree and for exports that are re-exported, thread-local, absolute or
/// resolved at run time.
std::map<std::string, std::uint64_t> readExportTrie(Bytes trie);

}  // namespace simulator
