#include "navigate/Dominance.h"

#include <algorithm>
#include <cstdint>

namespace {

/// Used instead of the magnitude, which does not fit into 16 bits for −32768; the square always
/// fits into 32 bits.
int square(std::int16_t value) { return value * value; }

}  // namespace

Act dominantAct(const Motion& motion) {
  const int push = square(motion.z);
  const int twist = square(motion.rz);
  const int sideways = std::max(square(motion.x), square(motion.y));
  if (twist > push && twist > sideways) return Act::kBrush;
  if (push > twist && push > sideways) return Act::kZoom;
  return Act::kPan;
}
