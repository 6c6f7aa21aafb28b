// The channel-ports suite.
#pragma once

#include "PIGeneral.h"

inline constexpr char kPSChannelPortsSuite[] = "Photoshop ChannelPorts Suite for Plug-ins";
inline constexpr int32 kPSChannelPortsSuiteVersion3 = 3;

/// Not in use: nothing calls through this table, so it is left open.
struct PSChannelPortsSuite1;
