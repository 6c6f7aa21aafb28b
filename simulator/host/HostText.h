// Texts of the host: UTF-8 where a procedure takes bytes, UTF-16 in its strings.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace simulator {

/// Copies as much of `text` as fits into `size` bytes with a terminating zero. A size of 0 ends
/// the procedure with paramErr.
void copyText(std::string_view text, char* destination, std::uint32_t size);

/// Conversions. What is not well formed becomes U+FFFD.
std::u16string utf16From(std::string_view utf8);
std::string utf8From(std::u16string_view utf16);

/// Whether `text` is well-formed UTF-8.
bool isUtf8(std::string_view text);

/// `text` with everything that is not well formed replaced, so that it can stand in JSON.
std::string wellFormed(std::string_view text);

}  // namespace simulator
