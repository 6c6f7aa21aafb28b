// Errors of the host's plug-in manager.
#pragma once

#include "SPTypes.h"

inline constexpr SPErr kSPNoError = 0;
inline constexpr SPErr kSPUnimplementedError = fourCharCode("!IMP");
inline constexpr SPErr kSPBadParameterError = fourCharCode("Parm");
inline constexpr SPErr kSPSuiteNotFoundError = fourCharCode("S!Fd");
