#include "actionfiles/FilePath.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "actionfiles/ActionFile.h"
#include "actionfiles/TextDecoding.h"

namespace actionfiles {

namespace {

// A path item.
constexpr std::string_view kPathHead = "txtu";
constexpr std::size_t kCountOffset = 8;
constexpr std::size_t kUnitsOffset = 12;

// An alias record.
constexpr std::size_t kVersionOffset = 6;
constexpr std::string_view kVersion2("\0\2", 2);
constexpr std::size_t kNameOffset = 50;
constexpr std::size_t kLongestName = 63;

std::uint32_t littleEndian32(std::string_view bytes, std::size_t offset) {
  std::uint32_t value = 0;
  for (std::size_t i = 4; i-- > 0;) {
    value = (value << 8) | static_cast<unsigned char>(bytes[offset + i]);
  }
  return value;
}

}  // namespace

std::optional<Text> pathOf(std::string_view bytes) {
  if (bytes.size() < kUnitsOffset) return std::nullopt;
  if (bytes.substr(0, kPathHead.size()) != kPathHead) return std::nullopt;
  const std::size_t count = littleEndian32(bytes, kCountOffset);
  if (count > (bytes.size() - kUnitsOffset) / 2) return std::nullopt;
  std::string units(bytes.substr(kUnitsOffset, 2 * count));
  for (std::size_t i = 0; i < units.size(); i += 2) std::swap(units[i], units[i + 1]);
  Text path;
  decodeUtf16(units, path);
  return path;
}

std::optional<Text> fileNameOfAlias(std::string_view bytes) {
  if (bytes.size() <= kNameOffset) return std::nullopt;
  if (bytes.substr(kVersionOffset, kVersion2.size()) != kVersion2) return std::nullopt;
  const std::size_t length = static_cast<unsigned char>(bytes[kNameOffset]);
  if (length > kLongestName || length > bytes.size() - kNameOffset - 1) return std::nullopt;
  return Text{utf8FromMacRoman(bytes.substr(kNameOffset + 1, length)), nullptr, false};
}

}  // namespace actionfiles
