// Errors that the simulated host returns but its interface does not declare.
#pragma once

#include "platform/host/PIGeneral.h"
#include "simulator/base/CallError.h"

namespace simulator {

inline constexpr OSErr kWrongDataType = -1703;         ///< errAEWrongDataType
inline constexpr OSErr kNoSuchObject = -1728;          ///< errAENoSuchObject
inline constexpr OSErr kCommandNotAvailable = -25920;  ///< the command is not available now

}  // namespace simulator
