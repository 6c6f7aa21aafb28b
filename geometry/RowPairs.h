// Sums of products of matrix elements, two columns at a time.
//
// The sums of a row's elements are independent of each other: two of them share a vector register
// of the processor, and each still adds up in its own order, rounding at every step.
#pragma once

namespace geometry_internal {

using Pair = double __attribute__((vector_size(2 * sizeof(double))));

inline Pair pairAt(const double* elements) { return Pair{elements[0], elements[1]}; }

inline void putPair(double* elements, Pair pair) {
  elements[0] = pair[0];
  elements[1] = pair[1];
}

/// Two columns of a matrix, from `column` on, top to bottom.
struct ColumnPair {
  ColumnPair(const double (&m)[4][4], int column)
      : rows{pairAt(&m[0][column]), pairAt(&m[1][column]), pairAt(&m[2][column]),
             pairAt(&m[3][column])} {}

  /// `factors` times these columns, summed up from 0.0 in order.
  Pair product(const double (&factors)[4]) const {
    Pair sum = {0.0, 0.0};
    for (int k = 0; k < 4; ++k) sum += factors[k] * rows[k];
    return sum;
  }

  Pair rows[4];
};

}  // namespace geometry_internal
