// A caller that is compiled for fused operations, in whose code products and sums meet those of the
// geometry.
#include <gtest/gtest.h>

#include "geometry/Geometry.h"

namespace {

// (1 + 2^-30)^2 is 1 + 2^-29 + 2^-60; rounding removes the last term, a fused operation keeps it.
constexpr double kSquareRounded = 1.0 + 0x1p-29;

// Volatile, to keep the compiler from computing the products.
volatile double gNearOne = 1.0 + 0x1p-30;

TEST(GeometryFused, OccursInTheCallersOwnCode) {
  const double nearOne = gNearOne;
  EXPECT_EQ(nearOne * nearOne - kSquareRounded, 0x1p-60);
}

TEST(GeometryFused, DoesNotOccurBetweenACallersProductsAndASum) {
  const double a = gNearOne;
  const CPoint3D p(-kSquareRounded, -kSquareRounded, -kSquareRounded);
  const CPoint3D sum = p + CPoint3D(a * a, a * a, a * a);
  const CPoint3D other = CPoint3D(a * a, a * a, a * a) + p;
  for (const CPoint3D& point : {sum, other}) {
    EXPECT_EQ(point.x, 0.0);
    EXPECT_EQ(point.y, 0.0);
    EXPECT_EQ(point.z, 0.0);
  }
}

TEST(GeometryFused, DoesNotOccurBetweenACallersProductsAndADifference) {
  const double a = gNearOne;
  const CVector3D v(kSquareRounded, kSquareRounded, kSquareRounded);
  const CVector3D difference = v - CVector3D(a * a, a * a, a * a);
  const CVector3D other = CVector3D(a * a, a * a, a * a) - v;
  for (const CVector3D& vector : {difference, other}) {
    EXPECT_EQ(vector.x, 0.0);
    EXPECT_EQ(vector.y, 0.0);
    EXPECT_EQ(vector.z, 0.0);
  }
}

TEST(GeometryFused, DoesNotOccurBetweenAScaledVectorAndASum) {
  const double a = gNearOne;
  const CVector3D v(-kSquareRounded, -kSquareRounded, -kSquareRounded);
  const CVector3D sum = CVector3D(a, a, a) * a + v;
  EXPECT_EQ(sum.x, 0.0);
  EXPECT_EQ(sum.y, 0.0);
  EXPECT_EQ(sum.z, 0.0);
}

TEST(GeometryFused, DoesNotOccurBetweenAScaledVectorAndTheCallersSum) {
  const double a = gNearOne;
  const CVector3D scaled = CVector3D(a, a, a) * a;
  EXPECT_EQ(scaled.x - kSquareRounded, 0.0);
  EXPECT_EQ(scaled.y - kSquareRounded, 0.0);
  EXPECT_EQ(scaled.z - kSquareRounded, 0.0);
}

TEST(GeometryFused, DoesNotOccurBetweenACallersProductsAndATransform) {
  const double a = gNearOne;
  CMatrix4D matrix;
  for (int row = 0; row < 3; ++row) matrix.m[row][3] = a * a;
  const CPoint3D point = matrix * CPoint3D(-kSquareRounded, -kSquareRounded, -kSquareRounded);
  EXPECT_EQ(point.x, 0.0);
  EXPECT_EQ(point.y, 0.0);
  EXPECT_EQ(point.z, 0.0);
}

TEST(GeometryFused, DoesNotOccurInATransformOfManyPoints) {
  constexpr int kCount = 64;
  CMatrix4D matrix;
  for (int i = 0; i < 3; ++i) {
    matrix.m[i][i] = gNearOne;
    matrix.m[i][3] = -kSquareRounded;
  }
  CPoint3D points[kCount];
  for (CPoint3D& point : points) point = CPoint3D(gNearOne, gNearOne, gNearOne);
  for (CPoint3D& point : points) point = matrix * point;
  for (const CPoint3D& point : points) {
    EXPECT_EQ(point.x, 0.0);
    EXPECT_EQ(point.y, 0.0);
    EXPECT_EQ(point.z, 0.0);
  }
}

}  // namespace
