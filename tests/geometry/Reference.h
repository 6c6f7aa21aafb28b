// The formulas of the geometry, written from its contract and without its code.
#pragma once

#include "geometry/Geometry.h"

namespace geometry_test {

struct Row {
  double c0, c1, c2, c3;
};

/// The rows of a matrix.
struct Expected {
  Row r0, r1, r2, r3;
};

inline constexpr Row kBottom = {0, 0, 0, 1};
inline constexpr Expected kIdentity = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, kBottom};

double dotProduct(const CVector3D& a, const CVector3D& b);
/// The three components, and 0.
Row crossProduct(const CVector3D& a, const CVector3D& b);

/// The matrix of a rotation vector.
Expected rotation(double x, double y, double z);
/// The matrix of a position.
Expected attitude(const CU3DPosition& p);

/// An element of a matrix product.
double element(const CMatrix4D& a, const CMatrix4D& b, int row, int column);
/// A coordinate of a transformed point.
double coordinate(const double (&row)[4], double x, double y, double z);

double determinant(const double (&m)[4][4]);
Expected inverse(const CMatrix4D& matrix);

}  // namespace geometry_test
