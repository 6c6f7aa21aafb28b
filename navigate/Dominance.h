// Decides which motion of a device sample is acted on. [any-thread]
#pragma once

#include <cstdint>

/// One sample of device motion in device counts: translation, then rotation.
struct Motion {
  std::int16_t x = 0, y = 0, z = 0, rx = 0, ry = 0, rz = 0;
};

/// What a sample changes.
enum class Act { kBrush, kZoom, kPan };

/// Returns kBrush if the twist (rz) is strictly larger than push and sideways motion, kZoom if the
/// push (z) is strictly larger than twist and sideways motion, otherwise kPan (also at rest and on
/// ties). Sideways motion is the larger of x and y; sizes are magnitudes; rx and ry are ignored.
Act dominantAct(const Motion& motion);
