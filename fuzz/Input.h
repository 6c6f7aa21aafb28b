// Decodes a fuzzer's bytes into values and strings. Each string lies in a heap block of exactly the
// size that a routine may use, which lets the address sanitizer catch any access past it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace fuzz {

/// Aborts with a message if `holds` is false: the input is then reported as a fault.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

using Bytes = std::unique_ptr<unsigned char[]>;

/// Reads values from the input; past its end every byte is 0.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

  template <class T>
  T value() {
    T result{};
    take(&result, sizeof result);
    return result;
  }

  bool flag() { return value<std::uint8_t>() & 1; }

  /// A length-prefixed string of any length and content, in 256 bytes.
  Bytes lengthPrefixed() {
    auto string = std::make_unique<unsigned char[]>(256);
    const std::size_t length = value<std::uint8_t>();
    string[0] = static_cast<unsigned char>(length);
    take(string.get() + 1, 255);
    return string;
  }

  /// A zero-terminated string of at most 599 characters. The block ends with its terminator, or has
  /// `room` bytes if that is more.
  std::unique_ptr<char[]> zeroTerminated(std::size_t room = 0) {
    const std::size_t length = std::min<std::size_t>(value<std::uint16_t>() % 600, left_);
    std::string text(length, 0);
    take(text.data(), length);
    text.resize(std::strlen(text.c_str()));
    auto string = std::make_unique<char[]>(std::max(room, text.size() + 1));
    std::copy(text.begin(), text.end(), string.get());
    return string;
  }

 private:
  void take(void* to, std::size_t size) {
    const std::size_t taken = std::min(size, left_);
    if (taken != 0) std::memcpy(to, data_, taken);
    data_ += taken;
    left_ -= taken;
  }

  const std::uint8_t* data_;
  std::size_t left_;
};

/// True if a length-prefixed string has at most 254 characters and a zero byte after the last.
inline bool isTerminated(const Bytes& text) { return text[0] <= 254 && text[text[0] + 1] == 0; }

}  // namespace fuzz
