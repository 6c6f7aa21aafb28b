#include "geometry/Geometry.h"

#include <cmath>

namespace {

// Truncated; stored positions were computed with these values.
constexpr double kRadiansPerDegree = 0.0174532925;
constexpr double kDegreesPerRadian = 57.2957795;

// A rotation by less than this angle (radians) counts as none: its axis is too inaccurate.
constexpr double kSmallestAngle = 0.0001;

// Up to this cosine, the second angle is so close to 90 degrees that the other two are ambiguous.
constexpr double kSmallestCosine = 0.005;

void setRow(double (&row)[4], double c0, double c1, double c2, double c3) {
  row[0] = c0;
  row[1] = c1;
  row[2] = c2;
  row[3] = c3;
}

void negateTranslationColumn(CMatrix4D& matrix) {
  for (int row = 0; row < 3; ++row) matrix.m[row][3] = -matrix.m[row][3];
}

}  // namespace

CVector3D& CVector3D::Normalize() {
  const double length = std::sqrt(z * z + (x * x + y * y));
  if (length > 0.0) {
    x /= length;
    y /= length;
    z /= length;
  }
  return *this;
}

CMatrix4D::CMatrix4D(const CVector3D& a, const CVector3D& b, const CVector3D& c) {
  setRow(m[0], a.x, b.x, c.x, 0.0);
  setRow(m[1], a.y, b.y, c.y, 0.0);
  setRow(m[2], a.z, b.z, c.z, 0.0);
  setRow(m[3], 0.0, 0.0, 0.0, 1.0);
}

CMatrix4D::CMatrix4D(const CVector3D& v) {
  const double angle = std::sqrt((v.x * v.x + v.y * v.y) + v.z * v.z);
  if (kSmallestAngle > std::fabs(angle)) {
    Identity();
    return;
  }
  const CVector3D n(v.x / angle, v.y / angle, v.z / angle);
  const double s = std::sin(angle);
  const double c = std::cos(angle);
  const double t = 1.0 - c;
  setRow(m[0], c + t * n.x * n.x, t * n.x * n.y - s * n.z, t * n.x * n.z + s * n.y, 0.0);
  setRow(m[1], s * n.z + t * n.x * n.y, c + t * n.y * n.y, t * n.y * n.z - s * n.x, 0.0);
  setRow(m[2], t * n.z * n.x - s * n.y, s * n.x + t * n.y * n.z, c + t * n.z * n.z, 0.0);
  setRow(m[3], 0.0, 0.0, 0.0, 1.0);
}

CMatrix4D::CMatrix4D(const CU3DPosition& position) {
  const double a = position.rx * kRadiansPerDegree;
  const double b = position.ry * kRadiansPerDegree;
  const double c = position.rz * kRadiansPerDegree;
  const double sa = std::sin(a), ca = std::cos(a);
  const double sb = std::sin(b), cb = std::cos(b);
  const double sc = std::sin(c), cc = std::cos(c);
  setRow(m[0], cb * cc, -(cb * sc), -sb, 0.0);
  setRow(m[1], sc * ca - sa * sb * cc, ca * cc + sc * sa * sb, -sa * cb, 0.0);
  setRow(m[2], sa * sc + cc * sb * ca, cc * sa - sb * ca * sc, ca * cb, 0.0);
  setRow(m[3], position.x, position.y, position.z, 1.0);
}

CU3DPosition CMatrix4D::U3DPosition() const {
  CU3DPosition position(m[3][0], m[3][1], m[3][2], 0.0, 0.0, 0.0);
  const double u = std::asin(m[0][2]);
  const double k = std::cos(u);
  position.ry = u * -kDegreesPerRadian;
  if (std::fabs(k) > kSmallestCosine) {
    position.rx = std::atan2(-m[1][2] / k, m[2][2] / k) * kDegreesPerRadian;
    position.rz = std::atan2(-m[0][1] / k, m[0][0] / k) * kDegreesPerRadian;
  } else {
    position.rz = std::atan2(m[1][0], m[1][1]) * kDegreesPerRadian;
  }
  return position;
}

CMatrix4D& CMatrix4D::Identity() {
  setRow(m[0], 1.0, 0.0, 0.0, 0.0);
  setRow(m[1], 0.0, 1.0, 0.0, 0.0);
  setRow(m[2], 0.0, 0.0, 1.0, 0.0);
  setRow(m[3], 0.0, 0.0, 0.0, 1.0);
  return *this;
}

CMatrix4D CMatrix4D::Transpose() const {
  CMatrix4D result;
  for (int row = 0; row < 4; ++row) {
    setRow(result.m[row], m[0][row], m[1][row], m[2][row], m[3][row]);
  }
  return result;
}

double CMatrix4D::Determinant() const {
  return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) +
         m[0][1] * (m[1][2] * m[2][0] - m[1][0] * m[2][2]) +
         m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

CMatrix4D CMatrix4D::Inverse() const {
  CMatrix4D result(*this);
  negateTranslationColumn(result);
  const double d = Determinant();
  if (d == 0.0) return result;
  setRow(result.m[0], (m[1][1] * m[2][2] - m[2][1] * m[1][2]) / d,
         (m[2][1] * m[0][2] - m[2][2] * m[0][1]) / d, (m[1][2] * m[0][1] - m[1][1] * m[0][2]) / d,
         result.m[0][3]);
  setRow(result.m[1], (m[2][0] * m[1][2] - m[2][2] * m[1][0]) / d,
         (m[0][0] * m[2][2] - m[0][2] * m[2][0]) / d, (m[0][2] * m[1][0] - m[1][2] * m[0][0]) / d,
         result.m[1][3]);
  setRow(result.m[2], (m[2][1] * m[1][0] - m[2][0] * m[1][1]) / d,
         (m[0][1] * m[2][0] - m[2][1] * m[0][0]) / d, (m[1][1] * m[0][0] - m[0][1] * m[1][0]) / d,
         result.m[2][3]);
  return result;
}
