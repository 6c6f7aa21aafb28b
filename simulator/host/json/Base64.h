// Base64 encoding and decoding, with padding (RFC 4648).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

std::string base64(std::string_view bytes);

/// The bytes; nullopt if `text` is not base64 with its padding.
std::optional<std::string> fromBase64(std::string_view text);

}  // namespace simulator
