// Bytes as base64.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

std::string base64(std::string_view bytes);

/// The bytes; none where `text` is not base64 with its padding.
std::optional<std::string> fromBase64(std::string_view text);

}  // namespace simulator
