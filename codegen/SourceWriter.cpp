#include "codegen/SourceWriter.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "codegen/DumpState.h"
#include "codegen/Terminology.h"

namespace {

constexpr std::size_t kTabSize = 5;

unsigned char byteAt(std::string_view text, std::size_t at) {
  return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
}

bool isWithin(unsigned byte, unsigned low, unsigned high) { return low <= byte && byte <= high; }

bool isContinuation(unsigned byte) { return isWithin(byte, 0x80, 0xBF); }

/// The length of the well-formed UTF-8 sequence of two or more bytes at the start of `text`; 0 if
/// there is none (Unicode, table 3-7).
std::size_t longSequence(std::string_view text) {
  const unsigned lead = byteAt(text, 0);
  const unsigned second = byteAt(text, 1);
  if (isWithin(lead, 0xC2, 0xDF)) return isContinuation(second) ? 2 : 0;
  if (!isContinuation(byteAt(text, 2))) return 0;
  if (isWithin(lead, 0xE0, 0xEF)) {
    return isWithin(second, lead == 0xE0 ? 0xA0 : 0x80, lead == 0xED ? 0x9F : 0xBF) ? 3 : 0;
  }
  if (!isWithin(lead, 0xF0, 0xF4) || !isContinuation(byteAt(text, 3))) return 0;
  return isWithin(second, lead == 0xF0 ? 0x90 : 0x80, lead == 0xF4 ? 0x8F : 0xBF) ? 4 : 0;
}

/// How many bytes at the start of `text` need no escape between two `quote` characters. Between
/// apostrophes, UTF-8 needs one: compilers differ in how many characters of a code it makes.
std::size_t plainLength(std::string_view text, char quote) {
  std::size_t length = 0;
  while (length < text.size()) {
    const char c = text[length];
    if (static_cast<unsigned char>(c) >= 0x80) {
      const std::size_t sequence = quote == '"' ? longSequence(text.substr(length)) : 0;
      if (sequence == 0) break;
      length += sequence;
    } else if (c >= 0x20 && c != 0x7F && c != quote && c != '\\') {
      ++length;
    } else {
      break;
    }
  }
  return length;
}

/// The escape sequence of one byte. Octal ones always have three digits; a digit after them cannot
/// become part of them.
std::string escapeSequence(char c) {
  switch (c) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    case '\\':
    case '"':
    case '\'':
      return {'\\', c};
    default:
      break;
  }
  const auto byte = static_cast<unsigned char>(c);
  return {'\\', static_cast<char>('0' + (byte >> 6)), static_cast<char>('0' + (byte >> 3 & 7)),
          static_cast<char>('0' + (byte & 7))};
}

}  // namespace

SourceWriter::SourceWriter(std::FILE* stream)
    : stream_(stream), buffer_(std::make_unique_for_overwrite<char[]>(kBufferSize)) {}

void SourceWriter::indent() {
  static constexpr std::string_view kTabs = "                                        ";
  std::size_t spaces = tabLevel > 0 ? static_cast<std::size_t>(tabLevel) * kTabSize : 0;
  for (; spaces > kTabs.size(); spaces -= kTabs.size()) append(kTabs);
  append(kTabs.substr(0, spaces));
}

void SourceWriter::errorCheck() {
  indent();
  append("if (error) goto returnError;\n\n");
}

void SourceWriter::append(std::int64_t number) {
  char digits[20];  // the length of INT64_MIN
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  append(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void SourceWriter::append(double number) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%g", number);
  const std::string_view text = digits;
  // The locale may have another decimal point, which a compiler would reject.
  constexpr std::string_view kNumber = "+-0123456789aefin";
  const std::size_t point = text.find_first_not_of(kNumber);
  if (point == std::string_view::npos) return append(text);
  write(text.substr(0, point), ".", text.substr(text.find_first_of(kNumber, point)));
}

void SourceWriter::append(StringLiteral literal) {
  append("\"");
  appendEscaped(literal.text, '"');
  append("\"");
}

void SourceWriter::append(IDName name) {
  constexpr std::size_t kWholeCode = 6;
  if (name.kind != NameKind::kCode) return appendEscaped(name.text, '"');
  append("'");
  appendEscaped(name.text.substr(1, 4), '\'');
  if (name.text.size() == kWholeCode) append("'");  // a code with a zero byte is cut before this
}

void SourceWriter::append(CommentText comment) {
  const std::string_view text = comment.text;
  const std::size_t last = text.find_last_not_of(' ');
  if (last == std::string_view::npos || text[last] != '\\') return appendEscaped(text, '"');
  appendEscaped(text.substr(0, last), '"');
  write("\\134", text.substr(last + 1));
}

void SourceWriter::appendEscaped(std::string_view text, char quote) {
  while (!text.empty()) {
    const std::size_t plain = plainLength(text, quote);
    append(text.substr(0, plain));
    if (plain == text.size()) return;
    append(escapeSequence(text[plain]));
    text.remove_prefix(plain + 1);
  }
}

void SourceWriter::appendLong(std::string_view text) {
  flush();
  while (text.size() > kBufferSize) {
    const std::string_view piece = text.substr(0, kBufferSize);
    append(piece);
    flush();
    text.remove_prefix(piece.size());
  }
  append(text);
}

void SourceWriter::flush() {
  if (stream_ != nullptr) std::fwrite(buffer_.get(), 1, used_, stream_);
  used_ = 0;
}
