// The channel-ports suite.
#pragma once

#include "PIGeneral.h"

inline constexpr char kPSChannelPortsSuite[] = "Photoshop ChannelPorts Suite for Plug-ins";
inline constexpr int32 kPSChannelPortsSuiteVersion3 = 3;

/// No code calls through this table, so its members are not declared.
struct PSChannelPortsSuite1;
