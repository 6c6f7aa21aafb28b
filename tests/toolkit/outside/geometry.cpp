// Succeeds if the rotation about an axis and its inverse, multiplied, are the identity.
#include "geometry/Geometry.h"

int main() {
  const CMatrix4D quarterTurn(CVector3D(0, 0, 1.5707963267948966));
  const CPoint3D there = quarterTurn * CPoint3D(1, 2, 3);
  const CPoint3D back = quarterTurn.Inverse() * there;
  const CPoint3D off = back - CPoint3D(1, 2, 3);
  return there.x < -1.9 && off.x * off.x + off.y * off.y + off.z * off.z < 1e-24 ? 0 : 1;
}
