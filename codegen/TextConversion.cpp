#include "codegen/TextConversion.h"

#include <CoreFoundation/CoreFoundation.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "codegen/HostValues.h"
#include "hostutil/CFObject.h"
#include "suites/Suites.h"

namespace {

constexpr UniChar kReplacementCharacter = 0xFFFD;

bool isHighSurrogate(UniChar unit) { return (unit & 0xFC00) == 0xD800; }
bool isLowSurrogate(UniChar unit) { return (unit & 0xFC00) == 0xDC00; }

/// UTF-8 cannot encode an unpaired surrogate; the platform refuses to convert text that has one.
void replaceUnpairedSurrogates(std::vector<UniChar>& units) {
  for (std::size_t i = 0; i < units.size(); ++i) {
    const bool isPair =
        isHighSurrogate(units[i]) && i + 1 < units.size() && isLowSurrogate(units[i + 1]);
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

}  // namespace

std::optional<std::string> textToUTF8(ASZString text) {
  const ASUInt32 length = sASZString->LengthAsUnicodeCString(text);
  if (!isCount(length)) return std::nullopt;
  const ASUInt32 size = length + 1;
  std::vector<UniChar> units(size);
  if (sASZString->AsUnicodeCString(text, units.data(), size, true) != 0) return std::nullopt;
  units.back() = 0;
  replaceUnpairedSurrogates(units);
  return convert(units);
}
