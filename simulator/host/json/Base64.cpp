#include "simulator/host/json/Base64.h"

#include <algorithm>
#include <cstdint>

namespace simulator {

namespace {

constexpr std::string_view kDigits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::uint32_t byteAt(std::string_view bytes, std::size_t i) {
  return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0;
}

/// The number of padding characters at the end, at most two.
std::size_t paddingOf(std::string_view text) {
  if (text.ends_with("==")) return 2;
  return text.ends_with('=') ? 1 : 0;
}

}  // namespace

std::string base64(std::string_view bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::uint32_t group =
        byteAt(bytes, i) << 16 | byteAt(bytes, i + 1) << 8 | byteAt(bytes, i + 2);
    const std::size_t digits = std::min<std::size_t>(bytes.size() - i, 3) + 1;
    for (std::size_t k = 0; k < 4; ++k) {
      text += k < digits ? kDigits[(group >> (18 - 6 * k)) & 0x3F] : '=';
    }
  }
  return text;
}

std::optional<std::string> fromBase64(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  const std::size_t padding = paddingOf(text);
  text.remove_suffix(padding);
  std::string bytes;
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::size_t digit = kDigits.find(text[i]);
    if (digit == std::string_view::npos) return std::nullopt;
    bits = bits << 6 | static_cast<std::uint32_t>(digit);
    if (i % 4 != 0) bytes += static_cast<char>(bits >> (6 - 2 * (i % 4)));
  }
  return bytes;
}

}  // namespace simulator
