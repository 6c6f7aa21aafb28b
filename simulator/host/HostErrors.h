// The errors that the simulated host answers with, beyond those of its interface.
#pragma once

#include "platform/host/PIGeneral.h"

namespace simulator {

inline constexpr OSErr kOutOfMemory = -108;            ///< memFullErr
inline constexpr OSErr kWrongDataType = -1703;         ///< errAEWrongDataType
inline constexpr OSErr kNoSuchObject = -1728;          ///< errAENoSuchObject
inline constexpr OSErr kCommandNotAvailable = -25920;  ///< the command is not available now

/// Ends a procedure of the host with `error`.
struct HostError {
  std::int32_t error;
};

}  // namespace simulator
