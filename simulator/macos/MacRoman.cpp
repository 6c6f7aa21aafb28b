#include "simulator/macos/MacRoman.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace simulator {

namespace {

/// The characters of the bytes 0x80 to 0xFF, from the Unicode Consortium's table ROMAN.TXT.
constexpr char32_t kUpperHalf[] =
    U"\u00C4\u00C5\u00C7\u00C9\u00D1\u00D6\u00DC\u00E1\u00E0\u00E2\u00E4\u00E3\u00E5\u00E7\u00E9"
    U"\u00E8\u00EA\u00EB\u00ED\u00EC\u00EE\u00EF\u00F1\u00F3\u00F2\u00F4\u00F6\u00F5\u00FA\u00F9"
    U"\u00FB\u00FC\u2020\u00B0\u00A2\u00A3\u00A7\u2022\u00B6\u00DF\u00AE\u00A9\u2122\u00B4\u00A8"
    U"\u2260\u00C6\u00D8\u221E\u00B1\u2264\u2265\u00A5\u00B5\u2202\u2211\u220F\u03C0\u222B\u00AA"
    U"\u00BA\u03A9\u00E6\u00F8\u00BF\u00A1\u00AC\u221A\u0192\u2248\u2206\u00AB\u00BB\u2026\u00A0"
    U"\u00C0\u00C3\u00D5\u0152\u0153\u2013\u2014\u201C\u201D\u2018\u2019\u00F7\u25CA\u00FF\u0178"
    U"\u2044\u20AC\u2039\u203A\uFB01\uFB02\u2021\u00B7\u201A\u201E\u2030\u00C2\u00CA\u00C1\u00CB"
    U"\u00C8\u00CD\u00CE\u00CF\u00CC\u00D3\u00D4\uF8FF\u00D2\u00DA\u00DB\u00D9\u0131\u02C6\u02DC"
    U"\u00AF\u02D8\u02D9\u02DA\u00B8\u02DD\u02DB\u02C7";
static_assert(std::size(kUpperHalf) - 1 == 128);

/// Removes the first character and returns it; nullopt if it is malformed.
std::optional<char32_t> takeCharacter(std::string_view& utf8) {
  const auto lead = static_cast<unsigned char>(utf8.front());
  const std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (utf8.size() < length || (lead >= 0x80 && lead < 0xC0)) return std::nullopt;
  char32_t character = length == 1 ? lead : lead & (0x7F >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(utf8[i]);
    if ((next & 0xC0) != 0x80) return std::nullopt;
    character = (character << 6) | (next & 0x3F);
  }
  utf8.remove_prefix(length);
  return character;
}

std::optional<char> byteOf(char32_t character) {
  if (character < 0x80) return static_cast<char>(character);
  const auto* end = std::end(kUpperHalf) - 1;
  const auto* place = std::find(std::begin(kUpperHalf), end, character);
  if (place == end) return std::nullopt;
  return static_cast<char>(0x80 + (place - std::begin(kUpperHalf)));
}

}  // namespace

std::optional<std::string> macRomanFromUtf8(std::string_view utf8) {
  std::string bytes;
  while (!utf8.empty()) {
    const auto character = takeCharacter(utf8);
    const auto byte = character ? byteOf(*character) : std::nullopt;
    if (!byte) return std::nullopt;
    bytes.push_back(*byte);
  }
  return bytes;
}

}  // namespace simulator
