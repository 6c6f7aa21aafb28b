// Symbols of the target's C and C++ libraries that this system's libraries can provide.
#pragma once

#include <string_view>

namespace simulator {

/// The result of the target's `__sincos_stret`, returned in the first two floating-point registers.
struct SineAndCosine {
  double sine, cosine;
};

/// The address of a libSystem symbol, given with its leading underscore; null if it is not on the
/// list of supported symbols.
void* findInLibSystem(std::string_view symbol);

/// The same for libc++ and libc++abi. Only what both systems' run times share by ABI is supported:
/// exceptions, type information and memory, but no strings, streams or containers.
void* findInLibCxx(std::string_view symbol);

}  // namespace simulator
