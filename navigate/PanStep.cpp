#include "navigate/PanStep.h"

#include "hostwindow/ScreenGeometry.h"

namespace {

/// counts * |counts| / 250. The last bit of the result depends on the first quotient being in
/// single precision and the others in double.
double squaredDeflection(int counts) {
  const float q = 500.0F / static_cast<float>(counts);
  const double k = static_cast<double>(q) * 0.5;
  const double m = counts / k;
  return counts <= 0 ? -m : m;
}

}  // namespace

// The origin is added before the truncation, and callers subtract it afterwards. That rounds small
// negative steps away from zero and positive ones towards it: a negative motion of any size moves,
// a positive one only from 16 counts on. The feel of a pan depends on that.
short panStepEnd(int counts) { return pixel(squaredDeflection(counts) + kPanOrigin); }
