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

/// The same for libc++ and libc++abi: a symbol that the distribution's libc++ exports under the
/// same name, which has the Mac's ABI (inline namespace __1). Symbols of the C++ ABI are those of
/// this process's own library, so exceptions and memory may cross from one to the other. A
/// LoadError if the symbol belongs to threads, locales, streams, files or stored exceptions, whose
/// records differ between the systems, on arm64 also to strings, and if libc++ is not installed.
void* findInLibCxx(std::string_view symbol);

}  // namespace simulator
