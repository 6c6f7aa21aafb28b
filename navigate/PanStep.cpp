#include "navigate/PanStep.h"

#include "hostwindow/ScreenGeometry.h"

namespace {

/// counts * |counts| / 250 through the quotients below: the first in single precision, the others
/// in double, which decides the last bit of the result.
double squaredDeflection(int counts) {
  const float q = 500.0F / static_cast<float>(counts);
  const double k = static_cast<double>(q) * 0.5;
  const double m = counts / k;
  return counts <= 0 ? -m : m;
}

}  // namespace

// The origin is added before the truncation and taken away after it, which rounds small negative
// steps away from zero and positive ones toward it: a negative motion of any size moves, a positive
// one only from 16 counts on. The feel of a pan depends on it.
short panStepEnd(int counts) { return pixel(squaredDeflection(counts) + kPanOrigin); }
