// The two spellings of a container's variable in the generated code. They differ on purpose: those
// who take the text in replace one by the other. [any-thread]
#pragma once

#include <string>
#include <string_view>

/// As the variable is declared and used: the prefix and the handle's value as 16 lower-case
/// hexadecimal digits, "desc0000600000000010".
std::string declaredName(std::string_view prefix, const void* handle);

/// As a statement of another container refers to it: the prefix and the handle in a stream's
/// default pointer form, "0x" and digits without padding, "desc0x600000000010".
std::string nestedName(std::string_view prefix, const void* handle);
