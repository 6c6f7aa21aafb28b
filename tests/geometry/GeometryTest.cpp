#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <type_traits>

#include "geometry/Geometry.h"

namespace {

using Limits = std::numeric_limits<double>;

void expectIdentity(const CMatrix4D& matrix) {
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      EXPECT_EQ(matrix.m[row][column], row == column ? 1.0 : 0.0) << row << ", " << column;
    }
  }
}

void expectPoint(const CPoint3D& point, double x, double y, double z) {
  EXPECT_EQ(point.x, x);
  EXPECT_EQ(point.y, y);
  EXPECT_EQ(point.z, z);
}

void expectVector(const CVector3D& vector, double x, double y, double z) {
  EXPECT_EQ(vector.x, x);
  EXPECT_EQ(vector.y, y);
  EXPECT_EQ(vector.z, z);
}

/// A matrix whose element at [r][c] is 10 r + c.
CMatrix4D numbered() {
  CMatrix4D matrix;
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) matrix.m[row][column] = 10 * row + column;
  }
  return matrix;
}

template <class T>
std::ptrdiff_t offset(const T& object, const double& field) {
  return reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&object);
}

/// The entries of the object's virtual table.
template <class T>
void* const* virtualTable(const T& object) {
  return *reinterpret_cast<void* const* const*>(&object);
}

TEST(GeometryLayout, ConsistsOfTheVirtualTablePointerAndTheFields) {
  EXPECT_EQ(sizeof(CPoint3D), sizeof(void*) + 3 * sizeof(double));
  EXPECT_EQ(sizeof(CVector3D), sizeof(void*) + 3 * sizeof(double));
  EXPECT_EQ(sizeof(CMatrix4D), sizeof(void*) + 16 * sizeof(double));
  EXPECT_EQ(sizeof(CU3DPosition), sizeof(void*) + 6 * sizeof(double));
}

TEST(GeometryLayout, HasTheFieldsInOrderAfterTheVirtualTablePointer) {
  const CPoint3D p;
  EXPECT_EQ(offset(p, p.x), 8);
  EXPECT_EQ(offset(p, p.y), 16);
  EXPECT_EQ(offset(p, p.z), 24);
  const CVector3D v;
  EXPECT_EQ(offset(v, v.x), 8);
  EXPECT_EQ(offset(v, v.y), 16);
  EXPECT_EQ(offset(v, v.z), 24);
  const CU3DPosition u;
  EXPECT_EQ(offset(u, u.x), 8);
  EXPECT_EQ(offset(u, u.z), 24);
  EXPECT_EQ(offset(u, u.rx), 32);
  EXPECT_EQ(offset(u, u.rz), 48);
}

TEST(GeometryLayout, OfAMatrixIsRowMajor) {
  const CMatrix4D matrix;
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      EXPECT_EQ(offset(matrix, matrix.m[row][column]), 8 + 8 * (4 * row + column));
    }
  }
}

TEST(GeometryLayout, IncludesAVirtualDestructor) {
  EXPECT_TRUE(std::has_virtual_destructor_v<CPoint3D>);
  EXPECT_TRUE(std::has_virtual_destructor_v<CVector3D>);
  EXPECT_TRUE(std::has_virtual_destructor_v<CMatrix4D>);
  EXPECT_TRUE(std::has_virtual_destructor_v<CU3DPosition>);
}

TEST(GeometryLayout, HasTwoDestructorsInTheVirtualTable) {
  const CPoint3D p;
  const CVector3D v;
  const CMatrix4D m;
  const CU3DPosition u;
  for (void* const* table : {virtualTable(p), virtualTable(v), virtualTable(m), virtualTable(u)}) {
    EXPECT_NE(table[0], nullptr);
    EXPECT_NE(table[1], nullptr);
    EXPECT_NE(table[0], table[1]);
  }
}

TEST(GeometryPoint, IsTheOriginByDefault) { expectPoint(CPoint3D(), 0, 0, 0); }

TEST(GeometryPoint, AddsByComponent) {
  expectPoint(CPoint3D(1, 2, 3) + CPoint3D(10, 20, 30), 11, 22, 33);
}

TEST(GeometryPoint, MinusAPointIsAPoint) {
  const auto difference = CPoint3D(1, 2, 3) - CPoint3D(10, 30, 50);
  EXPECT_TRUE((std::is_same_v<decltype(difference), const CPoint3D>));
  expectPoint(difference, -9, -28, -47);
}

TEST(GeometryVector, IsUnchangedByNormalizingIfItIsZero) {
  CVector3D zero;
  zero.Normalize();
  expectVector(zero, 0, 0, 0);
}

TEST(GeometryVector, HasLengthOneAfterNormalizing) {
  CVector3D v(3, 0, 4);
  EXPECT_EQ(&v.Normalize(), &v);
  expectVector(v, 0.6, 0, 0.8);
}

TEST(GeometryVector, IsUnchangedByNormalizingIfAComponentIsNaN) {
  CVector3D v(3, Limits::quiet_NaN(), 4);
  v.Normalize();
  EXPECT_EQ(v.x, 3);
  EXPECT_EQ(v.z, 4);
}

TEST(GeometryVector, IsUnchangedByNormalizingIfItsLengthUnderflows) {
  CVector3D v(Limits::min(), 0, 0);
  v.Normalize();
  expectVector(v, Limits::min(), 0, 0);
}

TEST(GeometryVector, DotProductAddsTheFirstTwoAxesBeforeTheThird) {
  const CVector3D v(1.0e16, -1.0e16, 1.0);
  EXPECT_EQ(v.DotProduct(CVector3D(1, 1, 1)), 1.0);
  EXPECT_EQ(CVector3D(1.0, 1.0e16, -1.0e16).DotProduct(CVector3D(1, 1, 1)), 0.0);
}

TEST(GeometryVector, CrossProductOfTheFirstTwoAxesIsTheThird) {
  expectVector(CVector3D(1, 0, 0).CrossProduct(CVector3D(0, 1, 0)), 0, 0, 1);
  expectVector(CVector3D(2, 3, 5).CrossProduct(CVector3D(7, 11, 13)), -16, 9, 1);
}

TEST(GeometryVector, AddsSubtractsAndScalesByComponent) {
  expectVector(CVector3D(1, 2, 3) + CVector3D(10, 20, 30), 11, 22, 33);
  expectVector(CVector3D(1, 2, 3) - CVector3D(10, 30, 50), -9, -28, -47);
  expectVector(CVector3D(1, 2, 3) * -2.0, -2, -4, -6);
}

TEST(GeometryPosition, HasNoTranslationAndNoRotationByDefault) {
  const CU3DPosition u;
  EXPECT_EQ(u.x, 0);
  EXPECT_EQ(u.y, 0);
  EXPECT_EQ(u.z, 0);
  EXPECT_EQ(u.rx, 0);
  EXPECT_EQ(u.ry, 0);
  EXPECT_EQ(u.rz, 0);
}

TEST(GeometryMatrix, IsTheIdentityByDefault) { expectIdentity(CMatrix4D()); }

TEST(GeometryMatrix, ResetsEveryElementToTheIdentity) {
  CMatrix4D matrix = numbered();
  EXPECT_EQ(&matrix.Identity(), &matrix);
  expectIdentity(matrix);
}

TEST(GeometryMatrix, CopiesEveryElement) {
  const CMatrix4D original = numbered();
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is under test
  const CMatrix4D copy(original);
  CMatrix4D assigned;
  EXPECT_EQ(&(assigned = original), &assigned);
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      EXPECT_EQ(copy.m[row][column], 10 * row + column);
      EXPECT_EQ(assigned.m[row][column], 10 * row + column);
    }
  }
}

TEST(GeometryMatrix, HasThreeVectorsAsItsColumns) {
  const CMatrix4D matrix(CVector3D(1, 2, 3), CVector3D(4, 5, 6), CVector3D(7, 8, 9));
  const double expected[4][4] = {{1, 4, 7, 0}, {2, 5, 8, 0}, {3, 6, 9, 0}, {0, 0, 0, 1}};
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      EXPECT_EQ(matrix.m[row][column], expected[row][column]);
    }
  }
}

TEST(GeometryMatrix, IsTheIdentityForARotationBelowTheSmallestAngle) {
  expectIdentity(CMatrix4D(CVector3D(0, 0, 0.00005)));
}

TEST(GeometryMatrix, IsNotTheIdentityForARotationByTheSmallestAngle) {
  EXPECT_EQ(CMatrix4D(CVector3D(0, 0, 0.0001)).m[1][0], std::sin(0.0001));
}

TEST(GeometryMatrix, RotatesAQuarterTurnAboutTheThirdAxis) {
  const CMatrix4D matrix(CVector3D(0, 0, std::numbers::pi / 2));
  EXPECT_NEAR(matrix.m[0][0], 0.0, 1e-15);
  EXPECT_EQ(matrix.m[0][1], -1.0);
  EXPECT_EQ(matrix.m[0][2], 0.0);
  EXPECT_EQ(matrix.m[0][3], 0.0);
}

TEST(GeometryMatrix, HasThePositionsTranslationInTheBottomRow) {
  const CMatrix4D matrix(CU3DPosition(5, 6, 7, 0, 0, 0));
  EXPECT_EQ(matrix.m[3][0], 5);
  EXPECT_EQ(matrix.m[3][1], 6);
  EXPECT_EQ(matrix.m[3][2], 7);
  EXPECT_EQ(matrix.m[3][3], 1);
  for (int row = 0; row < 3; ++row) EXPECT_EQ(matrix.m[row][3], 0);
}

TEST(GeometryMatrix, ReadsThePositionFromTheBottomRowNotTheLastColumn) {
  CMatrix4D matrix(CU3DPosition(5, 6, 7, 0, 0, 0));
  for (int row = 0; row < 3; ++row) matrix.m[row][3] = 100;
  const CU3DPosition u = matrix.U3DPosition();
  EXPECT_EQ(u.x, 5);
  EXPECT_EQ(u.y, 6);
  EXPECT_EQ(u.z, 7);
}

TEST(GeometryMatrix, ReturnsThePositionItWasMadeFrom) {
  const CU3DPosition u = CMatrix4D(CU3DPosition(1, 2, 3, 10, -20, 30)).U3DPosition();
  EXPECT_NEAR(u.rx, 10, 1e-6);
  EXPECT_NEAR(u.ry, -20, 1e-6);
  EXPECT_NEAR(u.rz, 30, 1e-6);
}

TEST(GeometryMatrix, ConvertsAnglesWithTheTruncatedConstants) {
  const CMatrix4D matrix(CU3DPosition(0, 0, 0, 0, 45, 0));
  EXPECT_EQ(matrix.m[0][2], -std::sin(45 * 0.0174532925));
  EXPECT_EQ(matrix.U3DPosition().ry, std::asin(matrix.m[0][2]) * -57.2957795);
  EXPECT_NE(matrix.U3DPosition().ry, 45.0);
}

TEST(GeometryMatrix, ReturnsTheWholeRollInRzIfRyIs90) {
  const CU3DPosition u = CMatrix4D(CU3DPosition(0, 0, 0, 20, 90, 50)).U3DPosition();
  EXPECT_EQ(u.rx, 0);
  EXPECT_NEAR(u.ry, 90, 1e-6);
  EXPECT_NEAR(u.rz, 30, 1e-6);
}

TEST(GeometryMatrix, ReturnsTheWholeRollInRzIfRyIsMinus90) {
  const CU3DPosition u = CMatrix4D(CU3DPosition(0, 0, 0, 20, -90, 50)).U3DPosition();
  EXPECT_EQ(u.rx, 0);
  EXPECT_NEAR(u.ry, -90, 1e-6);
  EXPECT_NEAR(u.rz, 70, 1e-6);
}

TEST(GeometryMatrix, TransposeExchangesRowsAndColumns) {
  const CMatrix4D transposed = numbered().Transpose();
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      EXPECT_EQ(transposed.m[row][column], 10 * column + row);
    }
  }
}

TEST(GeometryMatrix, DeterminantIsOneIfOnlyTheLastElementIsZero) {
  CMatrix4D matrix;
  matrix.m[3][3] = 0;
  EXPECT_EQ(matrix.Determinant(), 1.0);
}

TEST(GeometryMatrix, DeterminantIgnoresRow3AndColumn3) {
  CMatrix4D matrix(CVector3D(2, 0, 0), CVector3D(0, 3, 0), CVector3D(0, 0, 5));
  for (int i = 0; i < 4; ++i) matrix.m[3][i] = matrix.m[i][3] = 1000 + i;
  EXPECT_EQ(matrix.Determinant(), 30.0);
}

TEST(GeometryMatrix, InverseNegatesTheLastColumnAndCopiesTheBottomRow) {
  CMatrix4D matrix;
  for (int i = 0; i < 3; ++i) {
    matrix.m[i][3] = 5 + i;
    matrix.m[3][i] = 15 + i;
  }
  const CMatrix4D inverse = matrix.Inverse();
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(inverse.m[i][3], -(5 + i));
    EXPECT_EQ(inverse.m[3][i], 15 + i);
    for (int j = 0; j < 3; ++j) EXPECT_EQ(inverse.m[i][j], i == j ? 1.0 : 0.0);
  }
  EXPECT_EQ(inverse.m[3][3], 1);
}

TEST(GeometryMatrix, InverseDoesNotRotateTheTranslation) {
  CMatrix4D matrix(CVector3D(0, 2, 0), CVector3D(-2, 0, 0), CVector3D(0, 0, 2));
  matrix.m[0][3] = 5;
  const CMatrix4D inverse = matrix.Inverse();
  EXPECT_EQ(inverse.m[0][1], 0.5);
  EXPECT_EQ(inverse.m[1][0], -0.5);
  EXPECT_EQ(inverse.m[0][3], -5);
  EXPECT_EQ(inverse.m[1][3], 0);
}

TEST(GeometryMatrix, InverseKeepsASingularBlockAndNegatesTheTranslation) {
  const CMatrix4D matrix = numbered();
  ASSERT_EQ(matrix.Determinant(), 0.0);
  const CMatrix4D inverse = matrix.Inverse();
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      EXPECT_EQ(inverse.m[row][column], 10 * row + column);
    }
    EXPECT_EQ(inverse.m[row][3], -(10 * row + 3));
  }
  for (int column = 0; column < 4; ++column) EXPECT_EQ(inverse.m[3][column], 30 + column);
}

TEST(GeometryMatrix, IsTheLeftFactorOfItsProduct) {
  CMatrix4D left;
  left.m[0][1] = 2;
  CMatrix4D right;
  right.m[1][0] = 3;
  const CMatrix4D product = left * right;
  EXPECT_EQ(product.m[0][0], 7);
  EXPECT_EQ(product.m[0][1], 2);
  EXPECT_EQ(product.m[1][0], 3);
  EXPECT_EQ(product.m[1][1], 1);
}

TEST(GeometryMatrix, AddsTheLastColumnToAPointAndDoesNotDivideByW) {
  CMatrix4D matrix;
  for (int i = 0; i < 3; ++i) matrix.m[i][3] = 5 + i;
  for (int i = 0; i < 4; ++i) matrix.m[3][i] = 100;
  expectPoint(matrix * CPoint3D(1, 2, 3), 6, 8, 10);
}

TEST(GeometryMatrix, AddsTheLastColumnToAVector) {
  CMatrix4D matrix = numbered();
  for (int i = 0; i < 3; ++i) matrix.m[i][3] = 5 + i;
  expectVector(matrix * CVector3D(1, 0, 0), matrix.m[0][0] + 5, matrix.m[1][0] + 6,
               matrix.m[2][0] + 7);
}

}  // namespace
