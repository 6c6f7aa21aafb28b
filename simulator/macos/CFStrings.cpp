// Strings: constants, strings made from UTF-16, and their conversion.
#include <CoreFoundation/CoreFoundation.h>
#include <fmt/format.h>

#include <cstring>
#include <limits>
#include <string_view>

#include "simulator/base/Log.h"
#include "simulator/base/Text.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/MacFaults.h"
#include "simulator/macos/MacRoman.h"

namespace simulator {

namespace {

/// nullopt if the text has a lone surrogate, which UTF-8 cannot encode.
std::optional<std::string> strictUtf8From(std::u16string_view units) {
  std::string utf8 = utf8From(units);
  return utf16From(utf8) == units ? std::optional(std::move(utf8)) : std::nullopt;
}

bool isSimulated(CFStringEncoding encoding, const char* procedure) {
  if (encoding == kCFStringEncodingUTF8 || encoding == kCFStringEncodingMacRoman) return true;
  theLog().misuse(fmt::format("{}: the encoding {:#x} is not simulated; UTF-8 and Mac Roman are",
                              procedure, encoding));
  return false;
}

std::optional<std::string> convert(std::u16string_view units, CFStringEncoding encoding) {
  if (!isSimulated(encoding, "CFStringGetCString")) return std::nullopt;
  return encoding == kCFStringEncodingUTF8 ? strictUtf8From(units) : macRomanFrom(units);
}

}  // namespace

}  // namespace simulator

using namespace simulator;

CFStringRef __CFStringMakeConstantString(const char* cStr) { return constantCFString(cStr); }

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* chars, CFIndex numChars) {
  if (numChars < 0) {
    theLog().misuse(fmt::format("CFStringCreateWithCharacters: {} characters", numChars));
    return nullptr;
  }
  if (failureOf(MacCall::kCFStringCreateWithCharacters)) return nullptr;
  std::u16string units(chars, chars + numChars);
  return static_cast<CFStringRef>(theCFObjects().make(CFText{std::move(units)}));
}

CFIndex CFStringGetLength(CFStringRef theString) {
  const auto text = theCFObjects().get<CFText>(theString, "CFStringGetLength");
  return text ? static_cast<CFIndex>(text->units.size()) : 0;
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding) {
  constexpr CFIndex kBytesPerUnit = 3;
  if (!isSimulated(encoding, "CFStringGetMaximumSizeForEncoding")) return kCFNotFound;
  if (encoding == kCFStringEncodingMacRoman) return length;
  const bool fits = length <= std::numeric_limits<CFIndex>::max() / kBytesPerUnit &&
                    length >= std::numeric_limits<CFIndex>::min() / kBytesPerUnit;
  return fits ? length * kBytesPerUnit : kCFNotFound;
}

Boolean CFStringGetCString(CFStringRef theString, char* buffer, CFIndex bufferSize,
                           CFStringEncoding encoding) {
  const auto text = theCFObjects().get<CFText>(theString, "CFStringGetCString");
  if (failureOf(MacCall::kCFStringGetCString)) return false;
  if (!text || bufferSize < 1) return false;
  buffer[0] = '\0';
  const auto bytes = convert(text->units, encoding);
  if (!bytes || static_cast<CFIndex>(bytes->size()) >= bufferSize) return false;
  std::memcpy(buffer, bytes->c_str(), bytes->size() + 1);
  return true;
}
