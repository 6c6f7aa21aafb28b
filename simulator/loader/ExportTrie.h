// The symbols that an image offers to others, kept as a prefix tree in its link data.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "simulator/loader/ByteReader.h"

namespace simulator {

/// Every exported symbol (with its leading underscore) and its offset from the image's start.
/// A LoadError for a damaged tree and for kinds of exports that are not plain: re-exported,
/// thread-local, resolved at run time.
std::map<std::string, std::uint64_t> readExportTrie(Bytes trie);

}  // namespace simulator
