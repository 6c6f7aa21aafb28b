// The Mac Roman character encoding.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// Converts UTF-8 to Mac Roman; nullopt if a character does not exist in Mac Roman or `utf8` is
/// malformed. [any-thread]
std::optional<std::string> macRomanFromUtf8(std::string_view utf8);

}  // namespace simulator
