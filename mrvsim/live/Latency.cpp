#include "mrvsim/live/Latency.h"

#include <algorithm>
#include <cmath>

namespace simulator::live {

namespace {

constexpr std::size_t kMostTimes = 1000;
constexpr double kNanosecondsToMilliseconds = 1e6;

}  // namespace

void Latency::add(std::int64_t nanoseconds) {
  if (times_.size() < kMostTimes) {
    times_.push_back(nanoseconds);
    return;
  }
  times_[next_] = nanoseconds;
  next_ = (next_ + 1) % kMostTimes;
}

double Latency::percentile(double share) const {
  if (times_.empty()) return 0;
  const auto rank = std::ceil(share * static_cast<double>(times_.size()));
  const auto index = static_cast<std::ptrdiff_t>(std::max(rank, 1.0)) - 1;
  std::vector<std::int64_t> sorted = times_;
  std::nth_element(sorted.begin(), sorted.begin() + index, sorted.end());
  return static_cast<double>(sorted[static_cast<std::size_t>(index)]) / kNanosecondsToMilliseconds;
}

}  // namespace simulator::live
