// Reads untrusted bytes: every access is checked against the end first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

namespace simulator {

/// Thrown if a file is damaged, uses a feature that the loader does not support, or needs something
/// that is missing. The text names it.
class LoadError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

using Bytes = std::span<const std::byte>;

/// A cursor over bytes. Every reading member advances it, and throws a LoadError that names the
/// bytes if they end too early. Numbers are little-endian.
class ByteReader {
 public:
  /// `what` names the bytes in errors; `position` may lie past the end, but reading there fails.
  /// REQUIRES: `bytes` and `what` outlive the reader.
  ByteReader(Bytes bytes, std::string_view what, std::size_t position = 0)
      : bytes_(bytes), what_(what), position_(position) {}

  bool atEnd() const { return position_ >= bytes_.size(); }
  std::size_t position() const { return position_; }
  void seek(std::size_t position) { position_ = position; }
  void skip(std::size_t size) { take(size); }

  /// Reads the next `sizeof(T)` bytes as a trivially copyable value.
  template <class T>
  T read() {
    static_assert(std::is_trivially_copyable_v<T>);
    T value;
    std::memcpy(&value, take(sizeof(T)).data(), sizeof(T));
    return value;
  }

  /// LEB128 numbers: seven bits a byte, least significant first. A LoadError beyond 64 bits.
  std::uint64_t readUleb();
  std::int64_t readSleb();

  /// The text up to the next zero byte; the cursor moves past that byte.
  std::string_view readText();

  /// The next `size` bytes, not copied.
  Bytes take(std::size_t size);

 private:
  [[noreturn]] void fail(std::string_view why) const;

  Bytes bytes_;
  std::string_view what_;
  std::size_t position_;
};

/// `size` bytes of `bytes` from `offset`; a LoadError that names `what` if they lie outside.
Bytes slice(Bytes bytes, std::uint64_t offset, std::uint64_t size, std::string_view what);

}  // namespace simulator
