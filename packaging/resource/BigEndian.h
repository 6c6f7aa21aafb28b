// Big-endian numbers and counted text in byte strings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "packaging/resource/ResourceFork.h"

/// Appends the `size` lowest bytes of `value` (1 to 8), the most significant first.
inline void appendBigEndian(std::string& out, std::uint64_t value, int size) {
  for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) out += static_cast<char>(value >> shift);
}

/// Reads a number of `size` bytes (0 to 4) at `offset`. Throws ResourceError if it extends beyond
/// the end.
inline std::uint32_t readBigEndian(const std::string& bytes, std::size_t offset, std::size_t size) {
  if (offset > bytes.size() || size > bytes.size() - offset) {
    throw ResourceError("the resource data end too early");
  }
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < size; ++i) {
    value = (value << 8) | static_cast<unsigned char>(bytes[offset + i]);
  }
  return value;
}

/// Reads `size` bytes at `offset`. Throws ResourceError if they extend beyond the end.
inline std::string readBytes(const std::string& bytes, std::size_t offset, std::size_t size) {
  if (offset > bytes.size() || size > bytes.size() - offset) {
    throw ResourceError("the resource data end too early");
  }
  return bytes.substr(offset, size);
}

/// Reads text that follows its length byte, which is at `offset`. Throws ResourceError if it
/// extends beyond the end.
inline std::string readCountedText(const std::string& bytes, std::size_t offset) {
  return readBytes(bytes, offset + 1, readBigEndian(bytes, offset, 1));
}
