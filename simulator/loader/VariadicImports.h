// Imports with variable arguments. On arm64 the Mac passes these arguments on the stack and Linux
// passes them in registers; on 64-bit Intel both systems pass them alike.
#pragma once

#include <string_view>

namespace simulator {

/// What an image's import `symbol`, given with its leading underscore, is bound to: on arm64, if
/// the function takes variable arguments or a list of them, one that takes them as the Mac passes
/// them; otherwise one that does the same as `function`. [any-thread]
void* asTheMacCalls(std::string_view symbol, void* function);

}  // namespace simulator
