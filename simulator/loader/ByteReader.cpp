#include "simulator/loader/ByteReader.h"

#include <fmt/format.h>

#include <algorithm>

namespace simulator {

Bytes ByteReader::take(std::size_t size) {
  if (position_ > bytes_.size() || size > bytes_.size() - position_) fail("ends too early");
  const Bytes taken = bytes_.subspan(position_, size);
  position_ += size;
  return taken;
}

std::uint64_t ByteReader::readUleb() {
  std::uint64_t value = 0;
  for (unsigned shift = 0;; shift += 7) {
    const auto byte = read<std::uint8_t>();
    const std::uint64_t bits = byte & 0x7F;
    if (shift > 63 || (shift == 63 && bits > 1)) fail("holds a number of more than 64 bits");
    value |= bits << shift;
    if ((byte & 0x80) == 0) return value;
  }
}

std::int64_t ByteReader::readSleb() {
  std::uint64_t value = 0;
  for (unsigned shift = 0;;) {
    const auto byte = read<std::uint8_t>();
    if (shift > 63) fail("holds a number of more than 64 bits");
    value |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
    shift += 7;
    if ((byte & 0x80) != 0) continue;
    const bool negative = (byte & 0x40) != 0 && shift < 64;
    return static_cast<std::int64_t>(negative ? value | (~std::uint64_t{0} << shift) : value);
  }
}

std::string_view ByteReader::readText() {
  if (position_ > bytes_.size()) fail("ends too early");
  const Bytes rest = bytes_.subspan(position_);
  const auto end = std::find(rest.begin(), rest.end(), std::byte{0});
  if (end == rest.end()) fail("holds a text without an end");
  const auto length = static_cast<std::size_t>(end - rest.begin());
  position_ += length + 1;
  return {reinterpret_cast<const char*>(rest.data()), length};
}

void ByteReader::fail(std::string_view why) const {
  throw LoadError(fmt::format("{} {} (at byte {})", what_, why, position_));
}

Bytes slice(Bytes bytes, std::uint64_t offset, std::uint64_t size, std::string_view what) {
  if (offset > bytes.size() || size > bytes.size() - offset) {
    throw LoadError(
        fmt::format("{} lies outside the file ({} bytes at {:#x})", what, size, offset));
  }
  return bytes.subspan(offset, size);
}

}  // namespace simulator
