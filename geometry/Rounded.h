// Keeps the compiler from fusing a product with the sum that it is added to.
//
// A fused multiply-add does not round the product, so its result has other bits. Where the language
// leaves the choice to the compiler, the flags of whoever includes a formula decide, and a pragma
// or a built-in function of the compilers does not hold against them. An empty assembler statement
// does: for the compiler it makes a new value.
#pragma once

namespace geometry_internal {

/// `value`, a number or a vector of numbers in a register, rounded to double precision whatever it
/// is used for.
template <class T>
inline T rounded(T value) {
#if defined(__x86_64__)
  asm("" : "+x"(value));
#elif defined(__aarch64__)
  asm("" : "+w"(value));
#else
  asm("" : "+m"(value));
#endif
  return value;
}

}  // namespace geometry_internal
