// The number of planes and the colour-services space of each of the host's image modes.
#pragma once

#include <cstdint>

/// The number of planes of an image of the host's image mode `mode` (0 to 17). Returns
/// `defaultPlanes` for a mode out of range and for the multichannel modes (7 and 14), whose images
/// may have any number of planes. [any-thread]
inline short CSPlanesFromMode(short mode, short defaultPlanes) {
  static constexpr short kPlanesPerMode[18] = {1, 1, 3, 3, 4, 3, 3, 0, 1,
                                               3, 1, 3, 3, 4, 0, 1, 3, 1};
  constexpr short kMultichannel = 7;
  constexpr short kDeepMultichannel = 14;
  if (static_cast<std::uint16_t>(mode) > 17) return defaultPlanes;
  if (mode == kMultichannel || mode == kDeepMultichannel) return defaultPlanes;
  return kPlanesPerMode[mode];
}

/// The colour-services space of the host's image mode `mode` (0 to 17); -1 if the mode has none or
/// is out of range. [any-thread]
inline short CSModeToSpace(short mode) {
  static constexpr short kSpacePerMode[18] = {-1, 4, -1, 0, 2, 5,  1, -1, 4,
                                              3,  4, 0,  3, 2, -1, 4, 0,  4};
  if (static_cast<std::uint16_t>(mode) > 17) return -1;
  return kSpacePerMode[mode];
}
