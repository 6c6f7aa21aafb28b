#include "mrvsim/live/Hand.h"

#include <algorithm>
#include <cmath>

namespace simulator::live {

namespace {

// The times in which about two thirds of the way are covered, in seconds.
constexpr double kPressTime = 0.12;
constexpr double kReleaseTime = 0.05;
constexpr double kPullTime = 0.02;

/// A deflection that is nearer than this to where it goes has arrived.
constexpr double kArrived = 0.01;

}  // namespace

void Hand::press(Axis axis, int direction, bool down) { keys_[axis][direction > 0 ? 1 : 0] = down; }

void Hand::letGo() {
  keys_ = {};
  pulled_.reset();
  device_ = {};
}

double Hand::wanted(std::size_t axis) const {
  if (pulled_) return (*pulled_)[axis];
  const auto [backward, forward] = keys_[axis];
  return (forward ? 1.0 : 0.0) - (backward ? 1.0 : 0.0);
}

void Hand::advance(double seconds) {
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    const double goal = wanted(axis);
    const double time = pulled_ ? kPullTime : goal == 0.0 ? kReleaseTime : kPressTime;
    double& place = moved_[axis];
    place = goal + (place - goal) * std::exp(-seconds / time);
    if (std::abs(place - goal) < kArrived) place = goal;
  }
}

Deflection Hand::deflection() const {
  Deflection sum = {};
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    sum[axis] = std::clamp(moved_[axis] + device_[axis], -1.0, 1.0);
  }
  return sum;
}

Sample Hand::sample(double fullDeflection) const {
  Sample counts = {};
  const Deflection now = deflection();
  std::transform(now.begin(), now.end(), counts.begin(), [&](double share) {
    return static_cast<std::int16_t>(std::lround(share * fullDeflection));
  });
  return counts;
}

}  // namespace simulator::live
