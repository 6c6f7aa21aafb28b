// Four-character codes: 32-bit identifiers written as four characters.
#pragma once

#include <cstdint>

/// The code of the four characters of `text`, the first in the most significant byte:
/// `fourCharCode("Prpr")` is 0x50727072. Characters are read as unsigned bytes. [any-thread]
constexpr std::uint32_t fourCharCode(const char (&text)[5]) {
  std::uint32_t code = 0;
  for (int i = 0; i < 4; ++i) {
    code = (code << 8) | static_cast<unsigned char>(text[i]);
  }
  return code;
}
