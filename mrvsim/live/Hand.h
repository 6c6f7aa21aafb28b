// A hand on the cap: held keys and a pulled picture of the cap become smooth deflections, as a hand
// that pushes and lets go would make them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace simulator::live {

/// The device's axes, in the order of its samples.
enum Axis : std::size_t { kSideways, kPush, kUpward, kTiltBack, kTwist, kTiltAside, kAxes };

/// How far the cap is out of its rest position along each axis, from -1 to 1.
using Deflection = std::array<double, kAxes>;

/// A sample of the device, in its counts.
using Sample = std::array<std::int16_t, kAxes>;

/// Combines what moves the cap. Time passes only by `advance`. [main-thread]
class Hand {
 public:
  /// A key for a direction of an axis, -1 or 1, goes down or up. Opposite keys cancel each other.
  void press(Axis axis, int direction, bool down);

  /// The picture of the cap is pulled to this deflection; nullopt: it was let go.
  void pull(const std::optional<Deflection>& deflection) { pulled_ = deflection; }

  /// What the connected devices report. It is taken as it is, because a hand has made it smooth.
  void follow(const Deflection& device) { device_ = device; }

  /// Lets go of everything.
  void letGo();

  /// The cap moves for so many seconds towards where the keys and the pull want it.
  void advance(double seconds);

  /// Where the cap is.
  Deflection deflection() const;

  /// The same in counts, if the full deflection is `fullDeflection` counts.
  Sample sample(double fullDeflection) const;

 private:
  double wanted(std::size_t axis) const;

  std::array<std::array<bool, 2>, kAxes> keys_ = {};  ///< for each axis: backward, forward
  std::optional<Deflection> pulled_;
  Deflection device_ = {};
  Deflection moved_ = {};  ///< by keys and pull
};

}  // namespace simulator::live
