#include "simulator/macos/MacRoman.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace simulator {

namespace {

/// The characters of the bytes 0x80 to 0xFF, from the Unicode Consortium's table ROMAN.TXT.
constexpr char16_t kUpperHalf[] =
    u"\u00C4\u00C5\u00C7\u00C9\u00D1\u00D6\u00DC\u00E1\u00E0\u00E2\u00E4\u00E3\u00E5\u00E7\u00E9"
    u"\u00E8\u00EA\u00EB\u00ED\u00EC\u00EE\u00EF\u00F1\u00F3\u00F2\u00F4\u00F6\u00F5\u00FA\u00F9"
    u"\u00FB\u00FC\u2020\u00B0\u00A2\u00A3\u00A7\u2022\u00B6\u00DF\u00AE\u00A9\u2122\u00B4\u00A8"
    u"\u2260\u00C6\u00D8\u221E\u00B1\u2264\u2265\u00A5\u00B5\u2202\u2211\u220F\u03C0\u222B\u00AA"
    u"\u00BA\u03A9\u00E6\u00F8\u00BF\u00A1\u00AC\u221A\u0192\u2248\u2206\u00AB\u00BB\u2026\u00A0"
    u"\u00C0\u00C3\u00D5\u0152\u0153\u2013\u2014\u201C\u201D\u2018\u2019\u00F7\u25CA\u00FF\u0178"
    u"\u2044\u20AC\u2039\u203A\uFB01\uFB02\u2021\u00B7\u201A\u201E\u2030\u00C2\u00CA\u00C1\u00CB"
    u"\u00C8\u00CD\u00CE\u00CF\u00CC\u00D3\u00D4\uF8FF\u00D2\u00DA\u00DB\u00D9\u0131\u02C6\u02DC"
    u"\u00AF\u02D8\u02D9\u02DA\u00B8\u02DD\u02DB\u02C7";
static_assert(std::size(kUpperHalf) - 1 == 128);

/// A combining accent, and the letters that have it in Mac Roman: without and with the accent.
struct Accent {
  char16_t mark;
  std::u16string_view letters;
  std::u16string_view accented;
};

/// From the canonical decompositions of the Unicode Character Database, but for the sign "not equal
/// to": the platform does not compose it.
constexpr Accent kAccents[] = {
    {0x300, u"AEIOUaeiou", u"\u00C0\u00C8\u00CC\u00D2\u00D9\u00E0\u00E8\u00EC\u00F2\u00F9"},
    {0x301, u"AEIOUaeiou", u"\u00C1\u00C9\u00CD\u00D3\u00DA\u00E1\u00E9\u00ED\u00F3\u00FA"},
    {0x302, u"AEIOUaeiou", u"\u00C2\u00CA\u00CE\u00D4\u00DB\u00E2\u00EA\u00EE\u00F4\u00FB"},
    {0x303, u"ANOano", u"\u00C3\u00D1\u00D5\u00E3\u00F1\u00F5"},
    {0x308, u"AEIOUYaeiouy",
     u"\u00C4\u00CB\u00CF\u00D6\u00DC\u0178\u00E4\u00EB\u00EF\u00F6\u00FC\u00FF"},
    {0x30A, u"Aa", u"\u00C5\u00E5"},
    {0x327, u"Cc", u"\u00C7\u00E7"},
};

constexpr char16_t kCapitalOmega = 0x3A9;
constexpr char16_t kOhmSign = 0x2126;  // canonically equivalent to the omega

std::optional<char> byteOf(char16_t unit) {
  if (unit < 0x80) return static_cast<char>(unit);
  const auto* end = std::end(kUpperHalf) - 1;
  const auto* place = std::find(std::begin(kUpperHalf), end, unit);
  if (place != end) return static_cast<char>(0x80 + (place - std::begin(kUpperHalf)));
  return unit == kOhmSign ? byteOf(kCapitalOmega) : std::nullopt;
}

std::optional<char> accentedByteOf(char16_t letter, char16_t mark) {
  const auto* accent = std::find_if(std::begin(kAccents), std::end(kAccents),
                                    [&](const Accent& known) { return known.mark == mark; });
  if (accent == std::end(kAccents)) return std::nullopt;
  const std::size_t place = accent->letters.find(letter);
  if (place == std::u16string_view::npos) return std::nullopt;
  return byteOf(accent->accented[place]);
}

}  // namespace

std::optional<std::string> macRomanFrom(std::u16string_view utf16) {
  std::string bytes;
  for (std::size_t i = 0; i < utf16.size(); ++i) {
    const bool isAccented = i + 1 < utf16.size() && accentedByteOf(utf16[i], utf16[i + 1]);
    const auto byte = isAccented ? accentedByteOf(utf16[i], utf16[i + 1]) : byteOf(utf16[i]);
    if (!byte) return std::nullopt;
    bytes.push_back(*byte);
    if (isAccented) ++i;
  }
  return bytes;
}

}  // namespace simulator
