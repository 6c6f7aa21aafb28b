// Basic types of the host's plug-in manager.
#pragma once

#include "PITypes.h"

/// An error of the plug-in manager: 0, or a four-character code.
using SPErr = int32;
using SPBoolean = int32;

/// The plug-in manager's own record of a plug-in; opaque.
using SPPluginRef = struct SPPlugin*;

/// A suite as the plug-in manager hands it out: the table of its procedures.
using SPSuite = void;
