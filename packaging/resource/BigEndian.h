// Big-endian numbers in runs of bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "packaging/resource/ResourceFork.h"

/// Appends the lowest `size` bytes of the value, most significant first.
inline void appendBigEndian(std::string& out, std::uint64_t value, int size) {
  for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) out += static_cast<char>(value >> shift);
}

/// The number in the `size` bytes at `offset`; a ResourceError where they do not lie inside.
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

/// `size` bytes at `offset`; a ResourceError where they do not lie inside.
inline std::string readBytes(const std::string& bytes, std::size_t offset, std::size_t size) {
  if (offset > bytes.size() || size > bytes.size() - offset) {
    throw ResourceError("the resource data end too early");
  }
  return bytes.substr(offset, size);
}

/// A length byte and so many characters behind it.
inline std::string readCountedText(const std::string& bytes, std::size_t offset) {
  return readBytes(bytes, offset + 1, readBigEndian(bytes, offset, 1));
}
