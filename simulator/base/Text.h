// Conversions between UTF-8 and UTF-16. [any-thread]
#pragma once

#include <string>
#include <string_view>

namespace simulator {

/// Conversions. What is not well formed becomes U+FFFD.
std::u16string utf16From(std::string_view utf8);
std::string utf8From(std::u16string_view utf16);

/// Whether `text` is well-formed UTF-8.
bool isUtf8(std::string_view text);

/// `text` with everything that is not well formed replaced, so that it can stand in JSON.
std::string wellFormed(std::string_view text);

}  // namespace simulator
