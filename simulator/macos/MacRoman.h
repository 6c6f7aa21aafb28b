// The Mac Roman character encoding.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// The text in Mac Roman; none where a character has no place in it or `utf8` is malformed.
std::optional<std::string> macRomanFromUtf8(std::string_view utf8);

}  // namespace simulator
