// What a fuzz target makes of its input: values, and strings in heap blocks of exactly the size
// that a routine may use, so that the address sanitizer sees every step beyond.
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

/// Ends the run where something does not hold that every input must keep.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

using Bytes = std::unique_ptr<unsigned char[]>;

/// Reads values off the input; zeros follow its end.
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

  /// A length-prefixed string: 256 bytes on the heap, of any content.
  Bytes lengthPrefixed() {
    auto string = std::make_unique<unsigned char[]>(256);
    const std::size_t length = value<std::uint8_t>();
    string[0] = static_cast<unsigned char>(length);
    take(string.get() + 1, 255);
    return string;
  }

  /// A zero-terminated string without a byte to spare; `room` is made up to that many bytes.
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

/// Whether a length-prefixed string ends as the routines that grow one leave it.
inline bool isTerminated(const Bytes& text) { return text[0] <= 254 && text[text[0] + 1] == 0; }

}  // namespace fuzz
