// Bit-for-bit comparison of numbers, and random numbers, for the tests of the geometry.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace geometry_test {

/// Whether two numbers are the same bit for bit; all NaNs count as the same.
inline bool sameBits(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

/// Random numbers: fractions, whole numbers, any bit pattern, and special values.
class Samples {
 public:
  explicit Samples(std::uint64_t seed) : random_(seed) {}

  double next() {
    switch (random_() % 16) {
      case 0:
        return special();
      case 1:
        return std::bit_cast<double>(random_());
      case 2:
      case 3:
        return static_cast<double>(static_cast<std::int64_t>(random_() % 2001) - 1000);
      default:
        return std::uniform_real_distribution<double>(-10.0, 10.0)(random_);
    }
  }

 private:
  double special() {
    using Limits = std::numeric_limits<double>;
    static const std::array<double, 10> kSpecial = {0.0,
                                                    -0.0,
                                                    1.0,
                                                    -1.0,
                                                    Limits::denorm_min(),
                                                    Limits::max(),
                                                    Limits::min(),
                                                    Limits::infinity(),
                                                    -Limits::infinity(),
                                                    Limits::quiet_NaN()};
    return kSpecial[random_() % kSpecial.size()];
  }

  std::mt19937_64 random_;
};

}  // namespace geometry_test
