// Compares results with their exact bits, computed outside this program. With these inputs a fused
// multiply-add would give other bits.
#include <gtest/gtest.h>

#include <cmath>

#include "geometry/Geometry.h"
#include "tests/geometry/Samples.h"

namespace {

using geometry_test::sameBits;

// Volatile, to keep the compiler from evaluating the sums at compile time.
volatile double gOne = 1.0;

CMatrix4D matrixOf(const double (&elements)[4][4]) {
  CMatrix4D matrix;
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      matrix.m[row][column] = gOne * elements[row][column];
    }
  }
  return matrix;
}

void expectBits(const CMatrix4D& matrix, const double (&expected)[4][4]) {
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      EXPECT_TRUE(sameBits(matrix.m[row][column], expected[row][column]))
          << row << ", " << column << ": " << matrix.m[row][column];
    }
  }
}

CMatrix4D sampleA() {
  return matrixOf(
      {{0x1.999999999999ap-4, 0x1.6666666666666p-1, -0x1.3333333333333p-2, 0x1.199999999999ap+0},
       {0x1.5555555555555p-2, -0x1.ccccccccccccdp-1, 0x1.999999999999ap-3, -0x1.2666666666666p+1},
       {0x1.3333333333333p-1, 0x1.ccccccccccccdp-2, 0x1.2492492492492p-3, 0x1.d99999999999ap+1},
       {-0x1.999999999999ap-1, 0x1.e666666666666p+0, 0x1.999999999999ap-5, 0x1.6666666666666p-2}});
}

CMatrix4D sampleB() {
  return matrixOf(
      {{0x1.4cccccccccccdp+0, -0x1.999999999999ap-3, 0x1.8a3d70a3d70a4p-1, 0x1.47ae147ae147bp-7},
       {0x1.999999999999ap-2, 0x1.c71c71c71c71cp-4, -0x1.999999999999ap+0, 0x1.199999999999ap+1},
       {-0x1.199999999999ap-1, 0x1.ccccccccccccdp-1, 0x1.3333333333333p-2, 0x1.745d1745d1746p-4},
       {0x1.3333333333333p-3, -0x1.b333333333333p+0, 0x1.51eb851eb851fp-1, 0x1.999999999999ap-1}});
}

CVector3D vectorV() { return CVector3D(gOne * 0.1, gOne * 0.7, gOne * -0.3); }
CVector3D vectorW() { return CVector3D(gOne * 1.3, gOne * 0.4, gOne / 9.0); }

TEST(GeometryBits, OfTheMatrixProductAreExact) {
  expectBits(
      sampleA() * sampleB(),
      {{0x1.7ae147ae147aep-1, -0x1.0a8641fdb9753p+1, -0x1.a0c49ba5e353ep-2, 0x1.3265a7bff415ap+1},
       {-0x1.86d3a06d3a06ep-2, 0x1.f62fc962fc962p+1, 0x1.e8ca11bfd44f8p-3, -0x1.e634c0634c064p+1},
       {0x1.6fb9c86953620p+0, -0x1.8ecfb9c869536p+2, 0x1.1d09a7a4b7bc2p+1, 0x1.fc07c4358393ep+1},
       {-0x1.051eb851eb853p-2, -0x1.6e5d4c3b2a190p-3, -0x1.b47ae147ae148p+1,
        0x1.1d380a6d1a407p+2}});
}

TEST(GeometryBits, OfAProductOfNegativeZerosArePositiveZero) {
  CMatrix4D negative;
  for (auto& row : negative.m) {
    for (double& element : row) element = -0.0;
  }
  EXPECT_TRUE(sameBits((negative * CMatrix4D()).m[0][0], 0.0));
}

TEST(GeometryBits, OfTheDeterminantAreExact) {
  EXPECT_TRUE(sameBits(sampleA().Determinant(), -0x1.6cef20dd92f7fp-3));
}

TEST(GeometryBits, OfTheInverseAreExact) {
  expectBits(
      sampleA().Inverse(),
      {{0x1.3a038eb56e24fp+0, 0x1.519dc26dbbdc6p+0, 0x1.75886a2d26fedp-1, -0x1.199999999999ap+0},
       {-0x1.9ff2dd621a8b4p-2, -0x1.171f9b4bf020dp+0, 0x1.58ccb0c737b01p-1, 0x1.2666666666666p+1},
       {-0x1.efa63e1e600d2p+1, -0x1.0d5fea1ba3819p+1, 0x1.d0858a9a9ccd2p+0, -0x1.d99999999999ap+1},
       {-0x1.999999999999ap-1, 0x1.e666666666666p+0, 0x1.999999999999ap-5, 0x1.6666666666666p-2}});
}

TEST(GeometryBits, OfThePointTransformAreExact) {
  const CPoint3D p = sampleA() * CPoint3D(0.3, -1.7, 2.9);
  EXPECT_TRUE(sameBits(p.x, -0x1.dc28f5c28f5c0p-1));
  EXPECT_TRUE(sameBits(p.y, -0x1.70a3d70a3d700p-4));
  EXPECT_TRUE(sameBits(p.z, 0x1.c3bfa2608c6f3p+1));
}

TEST(GeometryBits, OfTheDotProductAreExact) {
  EXPECT_TRUE(sameBits(vectorV().DotProduct(vectorW()), 0x1.81b4e81b4e81bp-2));
}

TEST(GeometryBits, OfTheCrossProductAreExact) {
  const CVector3D cross = vectorV().CrossProduct(vectorW());
  EXPECT_TRUE(sameBits(cross.x, 0x1.950c83fb72ea6p-3));
  EXPECT_TRUE(sameBits(cross.y, -0x1.9abcdf0123457p-2));
  EXPECT_TRUE(sameBits(cross.z, -0x1.bd70a3d70a3d6p-1));
}

TEST(GeometryBits, OfANormalizedVectorAreExact) {
  CVector3D w = vectorW();
  w.Normalize();
  EXPECT_TRUE(sameBits(w.x, 0x1.e7bbf14b1eb90p-1));
  EXPECT_TRUE(sameBits(w.y, 0x1.2c24e341eb859p-2));
  EXPECT_TRUE(sameBits(w.z, 0x1.4d7e51d77777ep-4));
}

// (1 + 2^-30)^2 is 1 + 2^-29 + 2^-60; rounding removes the last term, a fused operation keeps it.
constexpr double kNearOne = 1.0 + 0x1p-30;
constexpr double kItsSquareRounded = 1.0 + 0x1p-29;

TEST(GeometryBitsContraction, ShowsWithTheseInputs) {
  EXPECT_EQ(std::fma(kNearOne, kNearOne, -kItsSquareRounded), 0x1p-60);
}

TEST(GeometryBitsContraction, DoesNotOccurInThePointTransform) {
  CMatrix4D matrix;
  matrix.m[0][0] = gOne * kNearOne;
  matrix.m[0][3] = -kItsSquareRounded;
  EXPECT_EQ((matrix * CPoint3D(gOne * kNearOne, 0, 0)).x, 0.0);
}

TEST(GeometryBitsContraction, DoesNotOccurInTheMatrixProduct) {
  CMatrix4D a, b;
  a.m[0][0] = -kItsSquareRounded;
  a.m[0][1] = b.m[1][0] = gOne * kNearOne;
  EXPECT_EQ((a * b).m[0][0], 0.0);
}

TEST(GeometryBitsContraction, DoesNotOccurInTheDeterminant) {
  CMatrix4D matrix;
  matrix.m[1][1] = matrix.m[2][2] = gOne * kNearOne;
  matrix.m[1][2] = gOne * kItsSquareRounded;
  matrix.m[2][1] = 1.0;
  EXPECT_EQ(matrix.Determinant(), 0.0);
}

TEST(GeometryBitsContraction, DoesNotOccurInTheDotAndCrossProducts) {
  const CVector3D v(gOne * kNearOne, gOne * kItsSquareRounded, 0);
  EXPECT_EQ(v.DotProduct(CVector3D(kNearOne, -1, 0)), 0.0);
  EXPECT_EQ(v.CrossProduct(CVector3D(gOne, kNearOne, 0)).z, 0.0);
}

}  // namespace
