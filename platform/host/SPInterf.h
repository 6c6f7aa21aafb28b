// The calls that the plug-in manager makes of its own accord.
#pragma once

#include "SPMData.h"

inline constexpr char kSPInterfaceCaller[] = "SP Interface";
inline constexpr char kSPInterfaceAboutSelector[] = "About";
inline constexpr char kSPInterfaceStartupSelector[] = "Startup";
inline constexpr char kSPInterfaceShutdownSelector[] = "Shutdown";
