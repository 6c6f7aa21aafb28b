// Compares every operation, bit for bit, with a reference implementation written from its contract,
// on up to a million random inputs.
#include <gtest/gtest.h>

#include <cmath>

#include "geometry/Geometry.h"
#include "tests/geometry/Reference.h"
#include "tests/geometry/Samples.h"
#include "tests/support/Build.h"

namespace {

using namespace geometry_test;

constexpr int kInputs = testing_support::kRandomInputs;

bool same(const double (&row)[4], const Row& expected) {
  return sameBits(row[0], expected.c0) && sameBits(row[1], expected.c1) &&
         sameBits(row[2], expected.c2) && sameBits(row[3], expected.c3);
}

bool same(const CMatrix4D& matrix, const Expected& expected) {
  return same(matrix.m[0], expected.r0) && same(matrix.m[1], expected.r1) &&
         same(matrix.m[2], expected.r2) && same(matrix.m[3], expected.r3);
}

template <class T>
bool same(const T& a, double x, double y, double z) {
  return sameBits(a.x, x) && sameBits(a.y, y) && sameBits(a.z, z);
}

CMatrix4D randomMatrix(Samples& samples) {
  CMatrix4D matrix;
  for (auto& row : matrix.m) {
    for (double& element : row) element = samples.next();
  }
  return matrix;
}

template <class T>
T randomTriple(Samples& samples) {
  const double x = samples.next();
  const double y = samples.next();
  const double z = samples.next();
  return T(x, y, z);
}

TEST(GeometryRandom, PointSumsAndDifferencesMatchTheReference) {
  Samples samples(1);
  for (int i = 0; i < kInputs; ++i) {
    const CPoint3D a = randomTriple<CPoint3D>(samples);
    const CPoint3D b = randomTriple<CPoint3D>(samples);
    ASSERT_TRUE(same(a + b, a.x + b.x, a.y + b.y, a.z + b.z)) << "input " << i;
    ASSERT_TRUE(same(a - b, a.x - b.x, a.y - b.y, a.z - b.z)) << "input " << i;
  }
}

TEST(GeometryRandom, VectorSumsAndProductsMatchTheReference) {
  Samples samples(2);
  for (int i = 0; i < kInputs; ++i) {
    const CVector3D a = randomTriple<CVector3D>(samples);
    const CVector3D b = randomTriple<CVector3D>(samples);
    const double s = samples.next();
    ASSERT_TRUE(same(a + b, a.x + b.x, a.y + b.y, a.z + b.z)) << "input " << i;
    ASSERT_TRUE(same(a - b, a.x - b.x, a.y - b.y, a.z - b.z)) << "input " << i;
    ASSERT_TRUE(same(a * s, a.x * s, a.y * s, a.z * s)) << "input " << i;
    ASSERT_TRUE(sameBits(a.DotProduct(b), dotProduct(a, b))) << "input " << i;
    const Row cross = crossProduct(a, b);
    ASSERT_TRUE(same(a.CrossProduct(b), cross.c0, cross.c1, cross.c2)) << "input " << i;
  }
}

TEST(GeometryRandom, NormalizedVectorsMatchTheReference) {
  Samples samples(3);
  for (int i = 0; i < kInputs; ++i) {
    const CVector3D v = randomTriple<CVector3D>(samples);
    const double length = std::sqrt(dotProduct(v, v));
    const bool kept = !(length > 0);
    CVector3D n = v;
    n.Normalize();
    ASSERT_TRUE(
        same(n, kept ? v.x : v.x / length, kept ? v.y : v.y / length, kept ? v.z : v.z / length))
        << "input " << i;
  }
}

TEST(GeometryRandom, MatricesOfThreeVectorsMatchTheReference) {
  Samples samples(4);
  for (int i = 0; i < kInputs; ++i) {
    const CVector3D a = randomTriple<CVector3D>(samples);
    const CVector3D b = randomTriple<CVector3D>(samples);
    const CVector3D c = randomTriple<CVector3D>(samples);
    ASSERT_TRUE(same(CMatrix4D(a, b, c),
                     {{a.x, b.x, c.x, 0}, {a.y, b.y, c.y, 0}, {a.z, b.z, c.z, 0}, kBottom}))
        << "input " << i;
  }
}

TEST(GeometryRandom, MatricesOfRotationVectorsMatchTheReference) {
  Samples samples(5);
  for (int i = 0; i < kInputs; ++i) {
    const double scale = i % 3 == 0 ? 1e-5 : 1.0;
    const CVector3D v = randomTriple<CVector3D>(samples) * scale;
    ASSERT_TRUE(same(CMatrix4D(v), rotation(v.x, v.y, v.z))) << "input " << i;
  }
}

TEST(GeometryRandom, MatricesOfPositionsMatchTheReference) {
  Samples samples(6);
  for (int i = 0; i < kInputs; ++i) {
    CU3DPosition p;
    for (double* field : {&p.x, &p.y, &p.z, &p.rx, &p.ry, &p.rz}) *field = 20 * samples.next();
    ASSERT_TRUE(same(CMatrix4D(p), attitude(p))) << "input " << i;
  }
}

TEST(GeometryRandom, PositionsOfMatricesMatchTheReference) {
  Samples samples(7);
  for (int i = 0; i < kInputs; ++i) {
    CMatrix4D matrix = randomMatrix(samples);
    if (i % 4 != 0) matrix.m[0][2] = std::fmod(matrix.m[0][2], 1.0);
    if (i % 8 == 1) matrix.m[0][2] = 1.0 - std::fabs(matrix.m[0][2]) * 5e-5;
    const double(&m)[4][4] = matrix.m;
    const double u = std::asin(m[0][2]);
    const double k = std::cos(u);
    double rx = 0;
    double rz = std::atan2(m[1][0], m[1][1]) * 57.2957795;
    if (std::fabs(k) > 0.005) {
      rx = std::atan2(-m[1][2] / k, m[2][2] / k) * 57.2957795;
      rz = std::atan2(-m[0][1] / k, m[0][0] / k) * 57.2957795;
    }
    const CU3DPosition p = matrix.U3DPosition();
    ASSERT_TRUE(same(p, m[3][0], m[3][1], m[3][2])) << "input " << i;
    ASSERT_TRUE(sameBits(p.rx, rx) && sameBits(p.ry, u * -57.2957795) && sameBits(p.rz, rz))
        << "input " << i;
  }
}

TEST(GeometryRandom, TransposedMatricesMatchTheReference) {
  Samples samples(8);
  for (int i = 0; i < kInputs; ++i) {
    const CMatrix4D matrix = randomMatrix(samples);
    const double(&m)[4][4] = matrix.m;
    ASSERT_TRUE(same(matrix.Transpose(), {{m[0][0], m[1][0], m[2][0], m[3][0]},
                                          {m[0][1], m[1][1], m[2][1], m[3][1]},
                                          {m[0][2], m[1][2], m[2][2], m[3][2]},
                                          {m[0][3], m[1][3], m[2][3], m[3][3]}}))
        << "input " << i;
  }
}

TEST(GeometryRandom, DeterminantsAndInversesMatchTheReference) {
  Samples samples(9);
  for (int i = 0; i < kInputs; ++i) {
    CMatrix4D matrix = randomMatrix(samples);
    if (i % 16 == 0) matrix.m[1][0] = matrix.m[1][1] = matrix.m[1][2] = 0;
    ASSERT_TRUE(sameBits(matrix.Determinant(), determinant(matrix.m))) << "input " << i;
    ASSERT_TRUE(same(matrix.Inverse(), inverse(matrix))) << "input " << i;
  }
}

TEST(GeometryRandom, MatrixProductsMatchTheReference) {
  Samples samples(10);
  for (int i = 0; i < kInputs; ++i) {
    const CMatrix4D a = randomMatrix(samples);
    const CMatrix4D b = randomMatrix(samples);
    const CMatrix4D product = a * b;
    for (int row = 0; row < 4; ++row) {
      for (int column = 0; column < 4; ++column) {
        ASSERT_TRUE(sameBits(product.m[row][column], element(a, b, row, column))) << "input " << i;
      }
    }
  }
}

TEST(GeometryRandom, PointAndVectorTransformsMatchTheReference) {
  Samples samples(11);
  for (int i = 0; i < kInputs; ++i) {
    const CMatrix4D matrix = randomMatrix(samples);
    const CPoint3D p = randomTriple<CPoint3D>(samples);
    const double x = coordinate(matrix.m[0], p.x, p.y, p.z);
    const double y = coordinate(matrix.m[1], p.x, p.y, p.z);
    const double z = coordinate(matrix.m[2], p.x, p.y, p.z);
    ASSERT_TRUE(same(matrix * p, x, y, z)) << "input " << i;
    ASSERT_TRUE(same(matrix * CVector3D(p.x, p.y, p.z), x, y, z)) << "input " << i;
  }
}

}  // namespace
