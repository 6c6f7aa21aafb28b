#include "codegen/Escapes.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace {

unsigned char byteAt(std::string_view text, std::size_t at) {
  return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
}

bool isByteWithin(unsigned byte, unsigned low, unsigned high) {
  return low <= byte && byte <= high;
}

bool isContinuation(unsigned byte) { return isByteWithin(byte, 0x80, 0xBF); }

}  // namespace

std::size_t longSequence(std::string_view text) {
  const unsigned lead = byteAt(text, 0);
  const unsigned second = byteAt(text, 1);
  if (isByteWithin(lead, 0xC2, 0xDF)) return isContinuation(second) ? 2 : 0;
  if (!isContinuation(byteAt(text, 2))) return 0;
  if (isByteWithin(lead, 0xE0, 0xEF)) {
    return isByteWithin(second, lead == 0xE0 ? 0xA0 : 0x80, lead == 0xED ? 0x9F : 0xBF) ? 3 : 0;
  }
  if (!isByteWithin(lead, 0xF0, 0xF4) || !isContinuation(byteAt(text, 3))) return 0;
  return isByteWithin(second, lead == 0xF0 ? 0x90 : 0x80, lead == 0xF4 ? 0x8F : 0xBF) ? 4 : 0;
}

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
