// The property suite and the keys in use.
#pragma once

#include "PIGeneral.h"

inline constexpr char kPSPropertySuite[] = "Photoshop Property Suite for Plug-ins";
inline constexpr int32 kPSPropertySuiteVersion = 1;

/// Whether the application is in a modal state; simple, non-zero for yes.
inline constexpr PIType propAppIsModal = fourCharCode("aism");
