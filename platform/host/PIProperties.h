// The property suite and the keys that the plug-in uses.
#pragma once

#include "PIGeneral.h"

inline constexpr char kPSPropertySuite[] = "Photoshop Property Suite for Plug-ins";
inline constexpr int32 kPSPropertySuiteVersion = 1;

/// A simple property: non-zero while the application is in a modal state.
inline constexpr PIType propAppIsModal = fourCharCode("aism");
