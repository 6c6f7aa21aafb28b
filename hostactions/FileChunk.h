// A window that moves over a file, for finding a few bytes in it without reading it whole.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string_view>

/// One read's worth of a file. A search that reaches past the bytes just read finds what the chunk
/// before left there, zeros at first; hosts' files are read so. [any-thread]
struct FileChunk {
  static constexpr std::size_t kCapacity = 200;
  static constexpr std::size_t kLongestPattern = 24;

  /// Reads on; false at the file's end.
  bool read(std::FILE* file);

  /// The position of the pattern among the bytes just read, `size` if it does not begin there. A
  /// pattern that is split between two chunks is not found.
  /// REQUIRES: 1 to kLongestPattern characters, each below 0x80.
  std::size_t find(std::string_view pattern) const;

  unsigned char bytes[kCapacity + kLongestPattern] = {};
  std::size_t size = 0;
};
