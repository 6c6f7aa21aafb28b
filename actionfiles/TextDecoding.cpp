#include "actionfiles/TextDecoding.h"

#include <cstddef>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

#include "actionfiles/ActionFile.h"

namespace actionfiles {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

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

char continuation(char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); }

void append(std::string& utf8, char32_t c) {
  if (c < 0x80) {
    utf8 += static_cast<char>(c);
  } else if (c < 0x800) {
    utf8 += static_cast<char>(0xC0 | (c >> 6));
    utf8 += continuation(c);
  } else if (c < 0x10000) {
    utf8 += static_cast<char>(0xE0 | (c >> 12));
    utf8 += continuation(c >> 6);
    utf8 += continuation(c);
  } else {
    utf8 += static_cast<char>(0xF0 | (c >> 18));
    utf8 += continuation(c >> 12);
    utf8 += continuation(c >> 6);
    utf8 += continuation(c);
  }
}

/// UTF-16 units given as bytes.
class Units {
 public:
  explicit Units(std::string_view bytes) : bytes_(bytes) {}

  std::size_t size() const { return bytes_.size() / 2; }
  char16_t operator[](std::size_t i) const {
    return static_cast<char16_t>((byte(2 * i) << 8) | byte(2 * i + 1));
  }
  void dropLast() { bytes_.remove_suffix(2); }
  std::u16string copy() const {
    std::u16string units;
    units.reserve(size());
    for (std::size_t i = 0; i < size(); ++i) units += (*this)[i];
    return units;
  }

 private:
  unsigned byte(std::size_t i) const { return static_cast<unsigned char>(bytes_[i]); }

  std::string_view bytes_;
};

bool isHigh(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool isLow(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

/// Appends the character that begins at unit `i`, and moves `i` past it. Returns false for a
/// surrogate without its partner.
bool appendCharacter(const Units& units, std::size_t& i, std::string& utf8) {
  const char16_t unit = units[i++];
  if (!isHigh(unit) && !isLow(unit)) {
    append(utf8, unit);
    return true;
  }
  if (isLow(unit) || i == units.size() || !isLow(units[i])) {
    append(utf8, kReplacement);
    return false;
  }
  append(utf8, 0x10000 + ((char32_t{unit} & 0x3FF) << 10) + (char32_t{units[i++]} & 0x3FF));
  return true;
}

}  // namespace

void decodeUtf16(std::string_view bytes, Text& text) {
  Units units(bytes);
  text.terminated = units.size() > 0 && units[units.size() - 1] == 0;
  if (text.terminated) units.dropLast();
  text.units.reset();
  text.utf8.resize(units.size());
  std::size_t i = 0;
  for (; i < units.size() && units[i] < 0x80; ++i) text.utf8[i] = static_cast<char>(units[i]);
  text.utf8.resize(i);
  bool exact = true;
  while (i < units.size()) exact &= appendCharacter(units, i, text.utf8);
  if (!exact) text.units = std::make_shared<const std::u16string>(units.copy());
}

std::string utf8FromMacRoman(std::string_view bytes) {
  std::string utf8;
  utf8.reserve(bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    append(utf8, byte < 0x80 ? char32_t{byte} : char32_t{kUpperHalf[byte - 0x80]});
  }
  return utf8;
}

}  // namespace actionfiles
