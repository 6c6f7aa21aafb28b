// The encodings of text in action files. [any-thread]
#pragma once

#include <string>
#include <string_view>

#include "actionfiles/ActionFile.h"

namespace actionfiles {

/// Sets `text` to UTF-16 units given as bytes, the more significant byte first. A last unit that is
/// 0 is the terminator. REQUIRES: an even number of bytes.
void decodeUtf16(std::string_view bytes, Text& text);

/// Mac Roman as UTF-8; each byte has a character.
std::string utf8FromMacRoman(std::string_view bytes);

}  // namespace actionfiles
