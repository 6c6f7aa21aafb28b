// The Mac Roman character encoding.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// Converts UTF-16 to Mac Roman; nullopt if a character does not exist in Mac Roman. A letter and
/// the combining accent after it become one byte if Mac Roman has the accented letter.
/// [any-thread]
std::optional<std::string> macRomanFrom(std::u16string_view utf16);

}  // namespace simulator
