// How long it takes from a person's input to the event that the plug-in posts for it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace simulator::live {

/// The latest times, of which the median and the 99th percentile are shown. [main-thread]
class Latency {
 public:
  /// Takes a time in nanoseconds. Only the last 1000 are kept.
  void add(std::int64_t nanoseconds);

  std::size_t count() const { return times_.size(); }

  /// The least time that is not exceeded by `share` of the times, 0 to 1, in milliseconds; 0 if
  /// there are none.
  double percentile(double share) const;

 private:
  std::vector<std::int64_t> times_;
  std::size_t next_ = 0;  ///< the place of the oldest time once all places are taken
};

}  // namespace simulator::live
