#include "codegen/TextConversion.h"

#include <CoreFoundation/CoreFoundation.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "codegen/HostValues.h"
#include "hostutil/CFObject.h"
#include "suites/Suites.h"

namespace {

constexpr UniChar kReplacementCharacter = 0xFFFD;

bool isHighSurrogate(UniChar unit) { return (unit & 0xFC00) == 0xD800; }
bool isLowSurrogate(UniChar unit) { return (unit & 0xFC00) == 0xDC00; }

/// UTF-8 cannot encode an unpaired surrogate; the platform refuses to convert text that has one.
/// REQUIRES: `units` ends with a zero unit.
void replaceUnpairedSurrogates(std::vector<UniChar>& units) {
  for (std::size_t i = 0; i < units.size(); ++i) {
    const bool isPair = isHighSurrogate(units[i]) && isLowSurrogate(units[i + 1]);
    if (isPair) {
      ++i;
    } else if (isHighSurrogate(units[i]) || isLowSurrogate(units[i])) {
      units[i] = kReplacementCharacter;
    }
  }
}

/// REQUIRES: `units` ends with a zero unit, which is converted with the rest.
std::optional<std::string> convert(const std::vector<UniChar>& units) {
  const CFObject<CFStringRef> string(CFStringCreateWithCharacters(
      kCFAllocatorDefault, units.data(), static_cast<CFIndex>(units.size())));
  if (!string) return std::nullopt;
  std::vector<char> utf8(units.size() * 3);  // a unit takes at most three bytes
  if (!CFStringGetCString(string.get(), utf8.data(), static_cast<CFIndex>(utf8.size()),
                          kCFStringEncodingUTF8)) {
    return std::nullopt;
  }
  return std::string(utf8.data());
}

/// The units of a text with a terminator; empty if the host cannot convert it.
std::vector<UniChar> terminatedUnits(ASZString text) {
  const ASUInt32 length = sASZString->LengthAsUnicodeCString(text);
  if (!isCount(length)) return {};
  const ASUInt32 size = length + 1;
  std::vector<UniChar> units(size);
  if (sASZString->AsUnicodeCString(text, units.data(), size, true) != 0) return {};
  units.back() = 0;
  return units;
}

void appendUTF8(char32_t character, std::string& utf8) {
  const auto continuation = [&](unsigned shift) {
    utf8 += static_cast<char>(0x80 | ((character >> shift) & 0x3F));
  };
  if (character < 0x80) {
    utf8 += static_cast<char>(character);
  } else if (character < 0x800) {
    utf8 += static_cast<char>(0xC0 | (character >> 6));
    continuation(0);
  } else if (character < 0x10000) {
    utf8 += static_cast<char>(0xE0 | (character >> 12));
    continuation(6);
    continuation(0);
  } else {
    utf8 += static_cast<char>(0xF0 | (character >> 18));
    continuation(12);
    continuation(6);
    continuation(0);
  }
}

}  // namespace

std::optional<std::string> textToUTF8(ASZString text) {
  std::vector<UniChar> units = terminatedUnits(text);
  if (units.empty()) return std::nullopt;
  replaceUnpairedSurrogates(units);
  return convert(units);
}

std::optional<std::u16string> textToUnits(ASZString text) {
  const std::vector<UniChar> units = terminatedUnits(text);
  if (units.empty()) return std::nullopt;
  return std::u16string(units.begin(), units.end() - 1);
}

std::optional<std::string> unitsToCString(std::u16string_view units) {
  constexpr char32_t kFirstOfPairs = 0x10000;
  std::string utf8;
  utf8.reserve(units.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    char32_t character = units[i];
    if (character == 0 || isLowSurrogate(units[i])) return std::nullopt;
    if (isHighSurrogate(units[i])) {
      ++i;
      if (i == units.size() || !isLowSurrogate(units[i])) return std::nullopt;
      character = kFirstOfPairs + ((character & 0x3FF) << 10) + (units[i] & 0x3FFu);
    }
    appendUTF8(character, utf8);
  }
  return utf8;
}
