// Conversions between UTF-8 and UTF-16. [any-thread]
#pragma once

#include <string>
#include <string_view>

namespace simulator {

/// Converts between the encodings. A byte that is not part of a valid UTF-8 sequence, and a lone
/// surrogate, becomes U+FFFD.
std::u16string utf16From(std::string_view utf8);
std::string utf8From(std::u16string_view utf16);

/// Whether `text` is well-formed UTF-8.
bool isUtf8(std::string_view text);

/// `text` with each byte that is not part of a valid UTF-8 sequence replaced by U+FFFD: JSON
/// strings must be valid.
std::string wellFormed(std::string_view text);

}  // namespace simulator
