// Which motion of a device sample wins. [any-thread]
#pragma once

#include <cstdint>

/// One sample of device motion in device counts: translation, then rotation.
struct Motion {
  std::int16_t x = 0, y = 0, z = 0, rx = 0, ry = 0, rz = 0;
};

/// What a sample does.
enum class Act { kBrush, kZoom, kPan };

/// The act of the motion that is strictly larger than the others: twist (rz) for the brush, push
/// (z) for the zoom. Sideways motion, at rest or tied with either, pans; rx and ry do not count.
Act dominantAct(const Motion& motion);
