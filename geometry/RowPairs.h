// Sums of products of matrix elements, two columns at a time.
//
// Two elements of a row share a vector register. Their sums are independent: each is still added
// up in order and rounded at every step.
#pragma once

#include "geometry/Rounded.h"

namespace geometry_internal {

using Pair = double __attribute__((vector_size(2 * sizeof(double))));

inline Pair pairAt(const double* elements) { return Pair{elements[0], elements[1]}; }

inline void putPair(double* elements, Pair pair) {
  elements[0] = pair[0];
  elements[1] = pair[1];
}

/// The columns `column` and `column` + 1 of a matrix, row by row.
struct ColumnPair {
  ColumnPair(const double (&m)[4][4], int column)
      : rows{pairAt(&m[0][column]), pairAt(&m[1][column]), pairAt(&m[2][column]),
             pairAt(&m[3][column])} {}

  /// The products of `factors` and these columns, each summed in order, starting at 0.0.
  Pair product(const double (&factors)[4]) const {
    Pair sum = {0.0, 0.0};
    for (int k = 0; k < 4; ++k) sum += rounded(factors[k] * rows[k]);
    return sum;
  }

  Pair rows[4];
};

/// The elements of the first two rows in one column.
inline Pair upperPair(const double (&m)[4][4], int column) {
  return Pair{m[0][column], m[1][column]};
}

}  // namespace geometry_internal
