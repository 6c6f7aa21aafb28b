// The C and C++ run time of the target, as far as this system's own can stand in for it.
#pragma once

#include <string_view>

namespace simulator {

/// What the target's `__sincos_stret` returns, in the first two floating-point registers.
struct SineAndCosine {
  double sine, cosine;
};

/// A symbol of libSystem; null where it is not on the list of what may be used.
void* findInLibSystem(std::string_view symbol);

/// A symbol of libc++ or libc++abi. Only what the two run times have in common by ABI is on the
/// list: exceptions, type information, memory; no strings, streams or containers.
void* findInLibCxx(std::string_view symbol);

}  // namespace simulator
