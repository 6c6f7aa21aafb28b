#include "simulator/scenario/Pacing.h"

#include <algorithm>

namespace simulator {

namespace {

std::int64_t squared(std::int16_t value) { return std::int64_t{value} * value; }

}  // namespace

MotionKind motionKind(const DeviceAxes& axes) {
  const std::int64_t push = squared(axes[1]);
  const std::int64_t twist = squared(axes[4]);
  const std::int64_t slide = std::max(squared(axes[0]), squared(axes[2]));
  if (push == 0 && twist == 0 && slide == 0) return MotionKind::kRest;
  if (twist > push && twist > slide) return MotionKind::kTwist;
  return push > twist && push > slide ? MotionKind::kPush : MotionKind::kSlide;
}

bool WaitCounter::begin() {
  if (value_ != 0) return false;
  value_ = 1;
  return true;
}

bool WaitCounter::drop() {
  constexpr int kLongestWait = 51;
  value_ = value_ < kLongestWait ? value_ + 1 : 0;
  return value_ == 0;
}

}  // namespace simulator
