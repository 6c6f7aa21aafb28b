// The caller and the selectors of the calls that the plug-in manager itself makes.
#pragma once

#include "SPMData.h"

inline constexpr char kSPInterfaceCaller[] = "SP Interface";
inline constexpr char kSPInterfaceAboutSelector[] = "About";
inline constexpr char kSPInterfaceStartupSelector[] = "Startup";
inline constexpr char kSPInterfaceShutdownSelector[] = "Shutdown";
