#include "simulator/base/Text.h"

#include <array>
#include <optional>

namespace simulator {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

/// The length in bytes of the sequence that starts with `lead`; 0 if `lead` cannot start one.
std::size_t sequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xC2) return 0;
  if (lead < 0xE0) return 2;
  if (lead < 0xF0) return 3;
  return lead < 0xF5 ? 4 : 0;
}

char32_t leadBits(unsigned char lead, std::size_t length) {
  constexpr std::array<unsigned char, 5> mask = {0, 0x7F, 0x1F, 0x0F, 0x07};
  return static_cast<char32_t>(lead & mask[length]);
}

bool isMinimal(char32_t c, std::size_t length) {
  constexpr std::array<char32_t, 5> least = {0, 0, 0x80, 0x800, 0x10000};
  return c >= least[length] && c <= 0x10FFFF && !isSurrogate(c);
}

/// Removes the first character from `text` and returns it. If the text does not start with a valid
/// sequence, removes one byte and returns nullopt.
std::optional<char32_t> takeCharacter(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = sequenceLength(lead);
  char32_t c = leadBits(lead, length);
  std::size_t taken = 1;
  while (taken < length && taken < text.size() && (text[taken] & 0xC0) == 0x80) {
    c = (c << 6) | static_cast<char32_t>(text[taken++] & 0x3F);
  }
  const bool valid = length > 0 && taken == length && isMinimal(c, length);
  text.remove_prefix(valid ? length : 1);
  return valid ? std::optional(c) : std::nullopt;
}

void appendUtf16(std::u16string& text, char32_t c) {
  if (c < 0x10000) {
    text += static_cast<char16_t>(c);
    return;
  }
  text += static_cast<char16_t>(0xD7C0 + (c >> 10));
  text += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
}

char continuation(char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); }

void appendUtf8(std::string& text, char32_t c) {
  if (c < 0x80) {
    text += static_cast<char>(c);
  } else if (c < 0x800) {
    text += {static_cast<char>(0xC0 | (c >> 6)), continuation(c)};
  } else if (c < 0x10000) {
    text += {static_cast<char>(0xE0 | (c >> 12)), continuation(c >> 6), continuation(c)};
  } else {
    text += {static_cast<char>(0xF0 | (c >> 18)), continuation(c >> 12), continuation(c >> 6),
             continuation(c)};
  }
}

bool isPair(std::u16string_view text) {
  return text.size() > 1 && text[0] >= 0xD800 && text[0] < 0xDC00 && text[1] >= 0xDC00 &&
         text[1] < 0xE000;
}

char32_t takeCharacter(std::u16string_view& text) {
  if (isPair(text)) {
    const char32_t c = 0x10000 + ((char32_t{text[0]} - 0xD800) << 10) + (text[1] - 0xDC00u);
    text.remove_prefix(2);
    return c;
  }
  const char32_t c = text.front();
  text.remove_prefix(1);
  return isSurrogate(c) ? kReplacement : c;
}

}  // namespace

std::u16string utf16From(std::string_view utf8) {
  std::u16string text;
  while (!utf8.empty()) appendUtf16(text, takeCharacter(utf8).value_or(kReplacement));
  return text;
}

std::string utf8From(std::u16string_view utf16) {
  std::string text;
  while (!utf16.empty()) appendUtf8(text, takeCharacter(utf16));
  return text;
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    if (!takeCharacter(text)) return false;
  }
  return true;
}

std::string wellFormed(std::string_view text) {
  if (isUtf8(text)) return std::string(text);
  return utf8From(utf16From(text));
}

}  // namespace simulator
