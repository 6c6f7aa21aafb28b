// What the host's image modes mean for planes and colour-services spaces.
#pragma once

#include <cstdint>

/// The planes that an image of the host's image mode `mode` (0 to 17) has. A mode above 17,
/// compared as an unsigned 16-bit number so that negative modes count as above, and the
/// multichannel modes (7 and 14), whose images have as many planes as they like, give
/// `defaultPlanes`. [any-thread]
inline short CSPlanesFromMode(short mode, short defaultPlanes) {
  static constexpr short planesPerMode[18] = {1, 1, 3, 3, 4, 3, 3, 0, 1, 3, 1, 3, 3, 4, 0, 1, 3, 1};
  constexpr short kMultichannel = 7;
  constexpr short kDeepMultichannel = 14;
  if (static_cast<std::uint16_t>(mode) > 17) return defaultPlanes;
  if (mode == kMultichannel || mode == kDeepMultichannel) return defaultPlanes;
  return planesPerMode[mode];
}

/// The colour-services space of the host's image mode `mode` (0 to 17), or -1 where the mode has
/// none. A mode above 17 or below 0 gives -1. [any-thread]
inline short CSModeToSpace(short mode) {
  static constexpr short modePerSpace[18] = {-1, 4, -1, 0, 2, 5,  1, -1, 4,
                                             3,  4, 0,  3, 2, -1, 4, 0,  4};
  if (static_cast<std::uint16_t>(mode) > 17) return -1;
  return modePerSpace[mode];
}
