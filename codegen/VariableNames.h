// The two spellings of a container's variable in the generated code. They stay different:
// developers who take over the text replace one by the other. [any-thread]
#pragma once

#include <string>
#include <string_view>

/// The spelling in the declaration and in the container's own statements: the prefix and the
/// handle's value as 16 lower-case hexadecimal digits, e.g. "desc0000600000000010".
std::string declaredName(std::string_view prefix, const void* handle);

/// The spelling in statements of other containers and in the play statement: the prefix, "0x" and
/// the handle's value in lower-case hexadecimal digits without padding, e.g. "desc0x600000000010".
std::string nestedName(std::string_view prefix, const void* handle);
