// Points, vectors, 4x4 matrices and positions in three dimensions, in double precision.
//
//   CMatrix4D quarterTurn(CVector3D(0, 0, 1.5707963267948966));  // about the third axis
//   CPoint3D moved = quarterTurn * CPoint3D(1, 0, 0);            // about (0, 1, 0)
//
// Results are the same bit for bit on every processor with IEEE 754 double precision: sums and
// products are evaluated in the order stated, three factors from left to right, every operation is
// rounded, and none is contracted into a fused multiply-add. This also holds for a caller that is
// compiled for such a processor with contraction allowed; it does not with options that change the
// values of expressions, such as -ffast-math.
//
// There are two conventions for the translation of a matrix, and callers depend on both: point
// transforms and `Inverse` have it in the last column (the matrix multiplies column vectors), the
// conversions from and to a `CU3DPosition` in the bottom row.
//
// An object consists of its virtual table pointer and its fields, in this order. Only the
// destructor is virtual. No operation fails or throws. [any-thread]; objects are plain values:
// concurrent access needs external synchronisation.
#pragma once

#include "geometry/RowPairs.h"

/// A location.
class CPoint3D {
 public:
  CPoint3D() = default;  ///< the origin
  CPoint3D(double ax, double ay, double az) : x(ax), y(ay), z(az) {}
  CPoint3D(const CPoint3D&) = default;
  CPoint3D& operator=(const CPoint3D&) = default;
  virtual ~CPoint3D() = default;

  /// Component-wise sum.
  CPoint3D operator+(const CPoint3D& other) const {
    using geometry_internal::rounded;
    return CPoint3D(rounded(x) + rounded(other.x), rounded(y) + rounded(other.y),
                    rounded(z) + rounded(other.z));
  }

  /// Component-wise difference, this - other; a point, not a vector.
  CPoint3D operator-(const CPoint3D& other) const {
    using geometry_internal::rounded;
    return CPoint3D(rounded(x) - rounded(other.x), rounded(y) - rounded(other.y),
                    rounded(z) - rounded(other.z));
  }

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

/// A direction or displacement.
class CVector3D {
 public:
  CVector3D() = default;  ///< the zero vector
  CVector3D(double ax, double ay, double az) : x(ax), y(ay), z(az) {}
  CVector3D(const CVector3D&) = default;
  CVector3D& operator=(const CVector3D&) = default;
  virtual ~CVector3D() = default;

  /// Divides each component by the length sqrt(z*z + (x*x + y*y)) and returns this vector. If the
  /// length is 0 or NaN, the vector is unchanged.
  CVector3D& Normalize();

  /// The dot product z*z' + (x*x' + y*y').
  double DotProduct(const CVector3D& other) const {
    using geometry_internal::rounded;
    return rounded(z * other.z) + (rounded(x * other.x) + rounded(y * other.y));
  }

  /// The cross product this x other = (y*z' - z*y', z*x' - x*z', x*y' - y*x').
  CVector3D CrossProduct(const CVector3D& other) const {
    using geometry_internal::rounded;
    return CVector3D(rounded(y * other.z) - rounded(z * other.y),
                     rounded(z * other.x) - rounded(x * other.z),
                     rounded(x * other.y) - rounded(y * other.x));
  }

  /// Component-wise sum.
  CVector3D operator+(const CVector3D& other) const {
    using geometry_internal::rounded;
    return CVector3D(rounded(x) + rounded(other.x), rounded(y) + rounded(other.y),
                     rounded(z) + rounded(other.z));
  }

  /// Component-wise difference, this - other.
  CVector3D operator-(const CVector3D& other) const {
    using geometry_internal::rounded;
    return CVector3D(rounded(x) - rounded(other.x), rounded(y) - rounded(other.y),
                     rounded(z) - rounded(other.z));
  }

  /// Each component times `s`.
  CVector3D operator*(double s) const {
    using geometry_internal::rounded;
    return CVector3D(rounded(x * s), rounded(y * s), rounded(z * s));
  }

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

/// A position and attitude: a translation and three rotation angles in degrees.
class CU3DPosition {
 public:
  CU3DPosition() = default;  ///< no translation, no rotation
  CU3DPosition(double ax, double ay, double az, double arx, double ary, double arz)
      : x(ax), y(ay), z(az), rx(arx), ry(ary), rz(arz) {}
  CU3DPosition(const CU3DPosition&) = default;
  CU3DPosition& operator=(const CU3DPosition&) = default;
  virtual ~CU3DPosition() = default;

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  double rx = 0.0;  ///< degrees about the first axis
  double ry = 0.0;  ///< degrees about the second axis
  double rz = 0.0;  ///< degrees about the third axis
};

/// A transform: `m[row][column]`, row-major.
class CMatrix4D {
 public:
  CMatrix4D() { Identity(); }
  CMatrix4D(const CMatrix4D&) = default;
  CMatrix4D& operator=(const CMatrix4D&) = default;
  virtual ~CMatrix4D() = default;

  /// The matrix whose first three columns are a, b and c; the last row and column are the
  /// identity's.
  CMatrix4D(const CVector3D& a, const CVector3D& b, const CVector3D& c);

  /// The rotation about the axis of `v` by its length in radians (Rodrigues' rotation formula for
  /// column vectors). If the length is below 0.0001, the identity.
  explicit CMatrix4D(const CVector3D& v);

  /// The rotation and translation of `position`, with the translation in the bottom row.
  explicit CMatrix4D(const CU3DPosition& position);

  /// The inverse of the constructor from a position; reads the translation from the bottom row. If
  /// the rotation about the second axis is close to +-90 degrees (its cosine is at most 0.005),
  /// `rx` is 0 and `rz` contains the whole roll.
  CU3DPosition U3DPosition() const;

  /// Sets this matrix to the identity and returns it.
  CMatrix4D& Identity();

  /// The matrix with rows and columns exchanged.
  CMatrix4D Transpose() const;

  /// The determinant of the upper-left 3x3 block; row 3 and column 3 are ignored.
  double Determinant() const;

  /// Not a general inverse: inverts the upper-left 3x3 block (copies it if its determinant is
  /// exactly 0), negates the upper three elements of the last column without rotating them, and
  /// copies the bottom row. Kept as callers in the field have it.
  CMatrix4D Inverse() const;

  /// The matrix product this * b. Each element is the sum over k = 0, 1, 2, 3, in this order,
  /// starting at 0.0.
  CMatrix4D operator*(const CMatrix4D& b) const;

  /// The transformed point, translation column included. Row 3 is not used; there is no division by
  /// w.
  CPoint3D operator*(const CPoint3D& p) const {
    using geometry_internal::rounded;
    using geometry_internal::upperPair;
    const geometry_internal::Pair xy = rounded(upperPair(m, 0) * p.x) +
                                       rounded(upperPair(m, 1) * p.y) +
                                       rounded(upperPair(m, 2) * p.z) + rounded(upperPair(m, 3));
    const double lower =
        rounded(m[2][0] * p.x) + rounded(m[2][1] * p.y) + rounded(m[2][2] * p.z) + rounded(m[2][3]);
    return CPoint3D(xy[0], xy[1], lower);
  }

  /// The vector, transformed like a point: the translation column is added, too. Callers depend on
  /// it.
  CVector3D operator*(const CVector3D& v) const {
    const CPoint3D p = *this * CPoint3D(v.x, v.y, v.z);
    return CVector3D(p.x, p.y, p.z);
  }

  double m[4][4];

 private:
  struct Uninitialised {};
  explicit CMatrix4D(Uninitialised) {}
};

inline CMatrix4D CMatrix4D::operator*(const CMatrix4D& b) const {
  const geometry_internal::ColumnPair left(b.m, 0);
  const geometry_internal::ColumnPair right(b.m, 2);
  CMatrix4D result{Uninitialised()};
  for (int i = 0; i < 4; ++i) {
    geometry_internal::putPair(&result.m[i][0], left.product(m[i]));
    geometry_internal::putPair(&result.m[i][2], right.product(m[i]));
  }
  return result;
}
