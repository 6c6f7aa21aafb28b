// Conversion of floating-point numbers to integers, defined for every value.
#pragma once

#include <cstdint>

/// `number` truncated toward zero; 0 if that does not fit into 32 bits or `number` is NaN.
/// [any-thread]
constexpr std::int32_t truncateToInt32(double number) {
  // Any value strictly between the bounds truncates to 32 bits; a NaN fails both comparisons.
  const bool fits = number > -2147483649.0 && number < 2147483648.0;
  return fits ? static_cast<std::int32_t>(number) : 0;
}
