// Strings for the tests of the text routines, in blocks of exactly the size that a routine may use:
// a memory checker reports every access beyond.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <string_view>

namespace hostutil_test {

inline std::string repeated(int count, char c) {
  return std::string(static_cast<std::size_t>(count), c);
}

/// A length-prefixed string in a block of exactly 256 bytes.
class PString {
 public:
  PString() : PString(std::string_view()) {}

  /// Fills the bytes after the characters with 'X', which reveals a missing zero byte.
  explicit PString(std::string_view text) : bytes_(std::make_unique<unsigned char[]>(256)) {
    std::memset(bytes_.get(), 'X', 256);
    bytes_[0] = static_cast<unsigned char>(text.size());
    std::copy(text.begin(), text.end(), bytes_.get() + 1);
  }

  PString(const PString& other) : PString() { *this = other; }
  PString& operator=(const PString& other) {
    std::memcpy(bytes_.get(), other.bytes_.get(), 256);
    return *this;
  }

  operator unsigned char*() { return bytes_.get(); }
  operator const unsigned char*() const { return bytes_.get(); }

  int length() const { return bytes_[0]; }
  std::string text() const { return std::string(characters(), bytes_[0]); }

  /// The characters up to the zero byte, or "no zero byte".
  std::string terminated() const {
    const void* end = std::memchr(characters(), 0, 255);
    return end ? std::string(characters()) : "no zero byte";
  }

  const char* characters() const { return reinterpret_cast<const char*>(bytes_.get()) + 1; }

  friend bool operator==(const PString& a, const PString& b) {
    return std::memcmp(a.bytes_.get(), b.bytes_.get(), 256) == 0;
  }

 private:
  std::unique_ptr<unsigned char[]> bytes_;
};

/// A zero-terminated string in a block of exactly `room` bytes, by default as many as it needs.
class CString {
 public:
  explicit CString(std::string_view text) : CString(text, text.size() + 1) {}
  CString(std::string_view text, std::size_t room) : bytes_(std::make_unique<char[]>(room)) {
    std::copy(text.begin(), text.end(), bytes_.get());
    if (text.size() < room) bytes_[text.size()] = 0;
  }

  operator char*() { return bytes_.get(); }
  operator const char*() const { return bytes_.get(); }
  std::string text() const { return bytes_.get(); }

 private:
  std::unique_ptr<char[]> bytes_;
};

/// Random strings and numbers; a quarter of the lengths are close to the limits.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  std::uint64_t bits() { return engine_(); }
  int below(int bound) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(bound)); }
  int between(int least, int most) { return least + below(most - least + 1); }

  int length() {
    switch (below(4)) {
      case 0:
        return between(250, 255);
      case 1:
        return below(256);
      default:
        return below(14);
    }
  }

  /// `length` characters from `alphabet`.
  std::string text(int length, std::string_view alphabet) {
    std::string result(static_cast<std::size_t>(length), 0);
    for (char& c : result) c = alphabet[engine_() % alphabet.size()];
    return result;
  }

 private:
  std::mt19937_64 engine_;
};

}  // namespace hostutil_test
