#include "tests/geometry/Reference.h"

#include <cmath>

namespace geometry_test {

double dotProduct(const CVector3D& a, const CVector3D& b) {
  const double xy = a.x * b.x + a.y * b.y;
  return a.z * b.z + xy;
}

Row crossProduct(const CVector3D& a, const CVector3D& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x, 0};
}

Expected rotation(double x, double y, double z) {
  const double theta = std::sqrt((x * x + y * y) + z * z);
  if (0.0001 > std::fabs(theta)) return kIdentity;
  const double nx = x / theta, ny = y / theta, nz = z / theta;
  const double s = std::sin(theta), c = std::cos(theta), t = 1 - c;
  return {{c + (t * nx) * nx, (t * nx) * ny - s * nz, (t * nx) * nz + s * ny, 0},
          {s * nz + (t * nx) * ny, c + (t * ny) * ny, (t * ny) * nz - s * nx, 0},
          {(t * nz) * nx - s * ny, s * nx + (t * ny) * nz, c + (t * nz) * nz, 0},
          kBottom};
}

Expected attitude(const CU3DPosition& p) {
  const double a = p.rx * 0.0174532925, b = p.ry * 0.0174532925, c = p.rz * 0.0174532925;
  const double sa = std::sin(a), ca = std::cos(a), sb = std::sin(b), cb = std::cos(b),
               sc = std::sin(c), cc = std::cos(c);
  return {{cb * cc, -(cb * sc), -sb, 0},
          {sc * ca - (sa * sb) * cc, ca * cc + (sc * sa) * sb, -sa * cb, 0},
          {sa * sc + (cc * sb) * ca, cc * sa - (sb * ca) * sc, ca * cb, 0},
          {p.x, p.y, p.z, 1}};
}

double element(const CMatrix4D& a, const CMatrix4D& b, int row, int column) {
  double sum = 0.0;
  sum = sum + a.m[row][0] * b.m[0][column];
  sum = sum + a.m[row][1] * b.m[1][column];
  sum = sum + a.m[row][2] * b.m[2][column];
  sum = sum + a.m[row][3] * b.m[3][column];
  return sum;
}

double coordinate(const double (&row)[4], double x, double y, double z) {
  return ((row[0] * x + row[1] * y) + row[2] * z) + row[3];
}

double determinant(const double (&m)[4][4]) {
  const double first = m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]);
  const double second = m[0][1] * (m[1][2] * m[2][0] - m[1][0] * m[2][2]);
  const double third = m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
  return (first + second) + third;
}

Expected inverse(const CMatrix4D& matrix) {
  const double(&m)[4][4] = matrix.m;
  const double d = determinant(m);
  const Row bottom = {m[3][0], m[3][1], m[3][2], m[3][3]};
  if (d == 0.0) {
    return {{m[0][0], m[0][1], m[0][2], -m[0][3]},
            {m[1][0], m[1][1], m[1][2], -m[1][3]},
            {m[2][0], m[2][1], m[2][2], -m[2][3]},
            bottom};
  }
  return {{(m[1][1] * m[2][2] - m[2][1] * m[1][2]) / d, (m[2][1] * m[0][2] - m[2][2] * m[0][1]) / d,
           (m[1][2] * m[0][1] - m[1][1] * m[0][2]) / d, -m[0][3]},
          {(m[2][0] * m[1][2] - m[2][2] * m[1][0]) / d, (m[0][0] * m[2][2] - m[0][2] * m[2][0]) / d,
           (m[0][2] * m[1][0] - m[1][2] * m[0][0]) / d, -m[1][3]},
          {(m[2][1] * m[1][0] - m[2][0] * m[1][1]) / d, (m[0][1] * m[2][0] - m[2][1] * m[0][0]) / d,
           (m[1][1] * m[0][0] - m[0][1] * m[1][0]) / d, -m[2][3]},
          bottom};
}

}  // namespace geometry_test
