// Search for a few bytes in a file, chunk by chunk. [any-thread]
#pragma once

#include <cstddef>
#include <cstdio>
#include <string_view>

/// The bytes of one read from a file. After a short read the rest of `bytes` still holds the
/// previous chunk (initially zeros), which a search may match; kept as the host's files have it.
struct FileChunk {
  static constexpr std::size_t kCapacity = 200;
  static constexpr std::size_t kLongestPattern = 24;

  /// Reads the next chunk, at most kCapacity bytes, at the file's position. Returns false if
  /// nothing was read: at the end of the file or on an error.
  bool read(std::FILE* file);

  /// Returns the first position below `size` at which the pattern begins, `size` if there is none.
  /// A pattern split between two chunks is not found.
  /// REQUIRES: `pattern` has 1 to kLongestPattern characters, each below 0x80.
  std::size_t find(std::string_view pattern) const;

  unsigned char bytes[kCapacity + kLongestPattern] = {};
  std::size_t size = 0;  ///< the number of bytes of the last read
};
