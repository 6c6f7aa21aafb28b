// The errors that the simulated host answers with, beyond those of its interface.
#pragma once

#include "platform/host/PIGeneral.h"
#include "simulator/base/CallError.h"

namespace simulator {

inline constexpr OSErr kWrongDataType = -1703;         ///< errAEWrongDataType
inline constexpr OSErr kNoSuchObject = -1728;          ///< errAENoSuchObject
inline constexpr OSErr kCommandNotAvailable = -25920;  ///< the command is not available now

}  // namespace simulator
