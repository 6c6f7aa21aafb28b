// Reads big-endian values from a source; every value is checked against the end of the bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "actionfiles/ByteSource.h"

namespace actionfiles {

/// Members that read take `what`, the phrase that an error uses for the value, such as "a
/// number of items". They throw ActionFileError with the offset of the value if the bytes end
/// before it does. Memory for a value is asked for only as its bytes arrive, whatever its length
/// claims.
class ByteInput {
 public:
  explicit ByteInput(ByteSource& source) : source_(source), size_(source.size()) {}

  /// The number of bytes read so far.
  std::uint64_t offset() const { return offsetOfEnd_ - left(); }

  std::uint8_t u8(const char* what) { return static_cast<std::uint8_t>(number<1>(what)); }
  std::uint16_t u16(const char* what) { return static_cast<std::uint16_t>(number<2>(what)); }
  std::uint32_t u32(const char* what) { return static_cast<std::uint32_t>(number<4>(what)); }
  std::uint64_t u64(const char* what) { return number<8>(what); }
  std::int32_t i32(const char* what) { return static_cast<std::int32_t>(u32(what)); }
  std::int64_t i64(const char* what) { return static_cast<std::int64_t>(u64(what)); }
  bool flag(const char* what) { return u8(what) != 0; }

  double f64(const char* what) {
    const std::uint64_t bits = u64(what);
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }

  /// A number of things of at least `leastSize` bytes each. Throws if so many cannot follow.
  std::uint32_t count(std::size_t leastSize, const char* what) {
    const std::uint32_t count = u32(what);
    if (std::uint64_t{count} * leastSize > left()) checkCount(count, leastSize, what);
    return count;
  }

  /// Replaces `bytes` by the next `length` bytes.
  void bytes(std::size_t length, std::string& bytes, const char* what) {
    const std::string_view taken = view(length, bytes, what);
    if (taken.data() != bytes.data()) bytes.assign(taken);
  }

  /// The next `length` bytes, valid until the next read; `buffer` holds them if they do not all lie
  /// in one piece.
  std::string_view view(std::size_t length, std::string& buffer, const char* what) {
    if (left() < length) return gather(length, buffer, what);
    next_ += length;
    return {next_ - length, length};
  }

  bool atEnd() { return left() == 0 && !refill(); }

  /// Throws: "WHAT is expected, found FOUND".
  [[noreturn]] void fail(std::uint64_t offset, const std::string& what,
                         const std::string& found) const;

 private:
  template <std::size_t kSize>
  std::uint64_t number(const char* what) {
    if (left() >= kSize) {
      next_ += kSize;
      return bigEndian<kSize>(next_ - kSize);
    }
    char bytes[kSize];
    gather(bytes, kSize, what);
    return bigEndian<kSize>(bytes);
  }

  // By halves, which compilers turn into one load and a swap of its bytes.
  template <std::size_t kSize>
  static std::uint64_t bigEndian(const char* bytes) {
    if constexpr (kSize == 1) {
      return static_cast<unsigned char>(*bytes);
    } else {
      constexpr std::size_t kHalf = kSize / 2;
      return (bigEndian<kHalf>(bytes) << (8 * kHalf)) | bigEndian<kHalf>(bytes + kHalf);
    }
  }

  std::size_t left() const { return static_cast<std::size_t>(end_ - next_); }
  void checkCount(std::uint32_t count, std::size_t leastSize, const char* what) const;
  std::uint64_t rest() const;
  bool refill();
  void gather(char* bytes, std::size_t size, const char* what);
  std::string_view gather(std::size_t length, std::string& buffer, const char* what);

  ByteSource& source_;
  std::optional<std::uint64_t> size_;
  const char* next_ = nullptr;  ///< the unread part of the current piece
  const char* end_ = nullptr;
  std::uint64_t offsetOfEnd_ = 0;  ///< the offset of `end_`
};

/// A four-character code as an error shows it, in quotes, with escapes for unprintable bytes.
std::string quotedCode(std::uint32_t code);

}  // namespace actionfiles
