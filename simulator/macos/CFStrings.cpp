// Constant strings, and strings made from UTF-16.
#include <CoreFoundation/CoreFoundation.h>

#include <string_view>

#include "simulator/base/Text.h"
#include "simulator/macos/CFObjects.h"

using namespace simulator;

CFStringRef __CFStringMakeConstantString(const char* cStr) { return constantCFString(cStr); }

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* chars, CFIndex numChars) {
  return makeCFString(utf8From(std::u16string(chars, chars + numChars)));
}

CFIndex CFStringGetLength(CFStringRef theString) {
  const auto text = theCFObjects().get<CFText>(theString, "CFStringGetLength");
  return text ? static_cast<CFIndex>(utf16From(text->utf8).size()) : 0;
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding) {
  return encoding == kCFStringEncodingUTF8 ? length * 3 : length;
}
