// What the plug-in does with the device's samples, as far as it can be followed from outside: which
// motion it acts on, and how it counts the samples that it drops until the host's redraw.
// [any-thread]
#pragma once

#include <array>
#include <cstdint>

namespace simulator {

/// The values of the device's axes, in the order of the scenario's `axes`.
using DeviceAxes = std::array<std::int16_t, 6>;

/// The motion that a sample is acted on for. A twist changes the brush, a push or pull zooms, a
/// slide pans.
enum class MotionKind { kRest, kTwist, kPush, kSlide };

/// kTwist or kPush if that motion is strictly larger than the other and than each slide, kRest if
/// none of these moves, otherwise kSlide.
MotionKind motionKind(const DeviceAxes& axes);

/// The counter of the samples from a tick to the host's redraw.
class WaitCounter {
 public:
  /// 0: the next sample is acted on; otherwise the samples of the wait, from 1 to 51.
  int value() const { return value_; }

  /// A tick was posted. Returns whether a wait begins with it.
  bool begin();

  /// A sample was dropped. Returns whether the wait ends with it, without a redraw.
  bool drop();

  /// The host has redrawn its window.
  void end() { value_ = 0; }

 private:
  int value_ = 0;
};

}  // namespace simulator
