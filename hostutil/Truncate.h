// Conversion of floating-point numbers to integers that is defined for every number.
#pragma once

#include <cstdint>

/// The number truncated toward zero; 0 where that does not fit into 32 bits or there is no number.
constexpr std::int32_t truncateToInt32(double number) {
  // The bounds exclude themselves because truncation comes first; a NaN fails both comparisons.
  const bool fits = number > -2147483649.0 && number < 2147483648.0;
  return fits ? static_cast<std::int32_t>(number) : 0;
}
