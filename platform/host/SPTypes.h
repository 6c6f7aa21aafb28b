// Basic types of the host's plug-in manager.
#pragma once

#include "PITypes.h"

/// An error of the plug-in manager: 0 or a four-character code.
using SPErr = int32;
using SPBoolean = int32;

/// The plug-in manager's opaque record of a plug-in.
using SPPluginRef = struct SPPlugin*;

/// The table of a suite's procedures, as the plug-in manager returns it.
using SPSuite = void;
