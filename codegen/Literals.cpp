#include "codegen/Literals.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "codegen/Escapes.h"

namespace {

constexpr std::size_t kPieceLength = 80;
constexpr std::size_t kLongestIdentifier = 40;

char32_t decoded(std::string_view sequence) {
  char32_t character = static_cast<unsigned char>(sequence[0]) & (0x7Fu >> sequence.size());
  for (const char c : sequence.substr(1)) {
    character = (character << 6) | (static_cast<unsigned char>(c) & 0x3Fu);
  }
  return character;
}

bool isWithin(char32_t c, char32_t low, char32_t high) { return low <= c && c <= high; }

/// Whether a character beyond ASCII is not seen or changes how others are seen: controls, spaces of
/// no width, marks of direction, separators of lines, tags, and noncharacters.
bool isHidden(char32_t c) {
  return isWithin(c, 0x80, 0x9F) || c == 0xAD || c == 0x61C || isWithin(c, 0x200B, 0x200F) ||
         isWithin(c, 0x2028, 0x202E) || isWithin(c, 0x2060, 0x206F) || c == 0xFEFF ||
         isWithin(c, 0xFFF0, 0xFFFB) || isWithin(c, 0xE0000, 0xE0FFF) || (c & 0xFFFE) == 0xFFFE;
}

/// The length of the character at the start of `text` if it can stand for itself; 0 if not. The
/// second of two question marks cannot: two begin a trigraph.
std::size_t visibleLength(std::string_view text, char before) {
  const auto c = static_cast<unsigned char>(text[0]);
  if (c >= 0x80) {
    const std::size_t length = longSequence(text);
    return length != 0 && !isHidden(decoded(text.substr(0, length))) ? length : 0;
  }
  return c >= 0x20 && c != 0x7F && c != '"' && c != '\\' && (c != '?' || before != '?') ? 1 : 0;
}

std::string escaped(char c) { return c == '?' ? "\\?" : escapeSequence(c); }

/// Collects the text of a literal and begins a new piece after each `kPieceLength` characters.
class Pieces {
 public:
  explicit Pieces(std::string_view prefix) : prefix_(prefix), text_(std::string(prefix) + "\"") {}

  void add(std::string_view token) {
    if (text_.size() - start_ >= kPieceLength) breakHere();
    text_ += token;
  }

  /// Ends the piece, so that what follows does not become part of an escape sequence.
  void separate() {
    text_ += "\" ";
    text_ += prefix_;
    text_ += '"';
  }

  std::string finish() { return std::move(text_) + "\""; }

 private:
  void breakHere() {
    text_ += "\"\n      ";
    start_ = text_.size();
    text_ += prefix_;
    text_ += '"';
  }

  std::string_view prefix_;
  std::string text_;
  std::size_t start_ = 0;
};

template <class Take>
void escapeAll(std::string_view text, bool isAsciiOnly, Take take) {
  char before = '\0';
  while (!text.empty()) {
    const bool isPlain = !isAsciiOnly || static_cast<unsigned char>(text[0]) < 0x80;
    const std::size_t length = isPlain ? visibleLength(text, before) : 0;
    before = text[0];
    if (length == 0) {
      take(std::string_view(escaped(text[0])));
      text.remove_prefix(1);
    } else {
      take(text.substr(0, length));
      text.remove_prefix(length);
    }
  }
}

std::string literal(std::string_view text, bool isAsciiOnly) {
  Pieces pieces("");
  escapeAll(text, isAsciiOnly, [&](std::string_view token) { pieces.add(token); });
  return pieces.finish();
}

bool isHexDigit(char16_t unit) {
  return isWithin(unit, u'0', u'9') || isWithin(unit, u'a', u'f') || isWithin(unit, u'A', u'F');
}

bool isLetterOrDigit(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

std::string formatted(const char* format, unsigned long long number) {
  char digits[32];
  std::snprintf(digits, sizeof digits, format, number);
  return digits;
}

/// The digits with a point in every locale, and with one if they would otherwise be an integer's.
std::string asReal(std::string digits) {
  const std::size_t point = digits.find_first_not_of("+-0123456789e");
  if (point != std::string::npos) {
    const std::size_t rest = digits.find_first_of("+-0123456789e", point);
    return digits.replace(point, rest - point, ".");
  }
  return digits.find('e') == std::string::npos ? digits + ".0" : digits;
}

/// The fewest digits, but at least 15, that read back as the number; 17 always do.
std::string digitsOf(double number) {
  char digits[32];
  for (const int precision : {15, 16}) {
    std::snprintf(digits, sizeof digits, "%.*g", precision, number);
    if (std::strtod(digits, nullptr) == number) return digits;
  }
  std::snprintf(digits, sizeof digits, "%.17g", number);
  return digits;
}

}  // namespace

std::string stringLiteral(std::string_view text) { return literal(text, false); }

std::string bytesLiteral(std::string_view bytes) { return literal(bytes, true); }

std::string unitsLiteral(std::u16string_view units) {
  Pieces pieces("u");
  bool isAfterEscape = false;
  for (const char16_t unit : units) {
    const char c = static_cast<char>(unit);
    const bool isPlain = unit < 0x80 && unit != u'?' && visibleLength({&c, 1}, '\0') == 1;
    if (isPlain && isAfterEscape && isHexDigit(unit)) pieces.separate();
    pieces.add(isPlain ? std::string(1, c) : formatted("\\x%04llX", unit));
    isAfterEscape = !isPlain;
  }
  return pieces.finish();
}

std::string commentText(std::string_view text) {
  std::string comment;
  escapeAll(text, false, [&](std::string_view token) { comment += token; });
  return comment;
}

std::string codeComment(std::uint32_t id) {
  std::string code = "'";
  for (int shift = 24; shift >= 0; shift -= 8) {
    const char c = static_cast<char>(id >> shift);
    // An asterisk could begin or end a comment, and two question marks a trigraph.
    const bool isPlain = c > 0x1F && c < 0x7F && c != '*' && c != '?' && c != '\\';
    if (isPlain) {
      code += c;
    } else {
      code += '\\';
      for (int digit = 6; digit >= 0; digit -= 3) {
        code += static_cast<char>('0' + ((static_cast<unsigned char>(c) >> digit) & 7));
      }
    }
  }
  code += '\'';
  return code;
}

std::string realLiteral(double number) {
  if (!std::isfinite(number)) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return formatted("realOfBits(0x%016llX)", bits);
  }
  return asReal(digitsOf(number));
}

std::string integerLiteral(std::int32_t number) {
  if (number == std::numeric_limits<std::int32_t>::min()) return "-2147483647 - 1";
  return std::to_string(number);
}

std::string integerLiteral(std::int64_t number) {
  if (number == std::numeric_limits<std::int64_t>::min()) return "-9223372036854775807LL - 1";
  return std::to_string(number) + "LL";
}

std::string integerLiteral(std::uint32_t number) { return std::to_string(number) + "u"; }

std::string identifierPart(std::string_view text) {
  std::string name;
  for (const char c : text) {
    if (name.size() == kLongestIdentifier) break;
    if (isLetterOrDigit(c)) {
      name += c;
    } else if (!name.empty() && name.back() != '_') {
      name += '_';
    }
  }
  if (!name.empty() && name.back() == '_') name.pop_back();
  return name;
}
