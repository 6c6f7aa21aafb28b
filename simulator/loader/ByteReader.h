// Reading untrusted bytes: everything is checked against the end before it is touched.
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

/// What is wrong with a file, or what it asks for that is not there; the text names it.
class LoadError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

using Bytes = std::span<const std::byte>;

/// A position in a run of bytes. Every reading member moves it and throws a LoadError that says
/// what was being read where the bytes end too early. Little-endian, as the files are.
class ByteReader {
 public:
  /// `what` names the bytes in errors; it must outlive the reader.
  ByteReader(Bytes bytes, std::string_view what, std::size_t position = 0)
      : bytes_(bytes), what_(what), position_(position) {}

  bool atEnd() const { return position_ >= bytes_.size(); }
  std::size_t position() const { return position_; }
  void seek(std::size_t position) { position_ = position; }
  void skip(std::size_t size) { take(size); }

  /// The next `sizeof(T)` bytes as a plain value or record.
  template <class T>
  T read() {
    static_assert(std::is_trivially_copyable_v<T>);
    T value;
    std::memcpy(&value, take(sizeof(T)).data(), sizeof(T));
    return value;
  }

  /// Numbers of seven bits a byte, least significant first; refused beyond 64 bits.
  std::uint64_t readUleb();
  std::int64_t readSleb();

  /// Text up to a zero byte, which is passed over.
  std::string_view readText();

  /// The next `size` bytes themselves.
  Bytes take(std::size_t size);

 private:
  [[noreturn]] void fail(std::string_view why) const;

  Bytes bytes_;
  std::string_view what_;
  std::size_t position_;
};

/// The part of `bytes` that starts at `offset`; refused where it does not lie inside.
Bytes slice(Bytes bytes, std::uint64_t offset, std::uint64_t size, std::string_view what);

}  // namespace simulator
