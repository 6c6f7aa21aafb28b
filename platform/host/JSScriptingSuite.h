// The scripting suite.
#pragma once

#include "PIGeneral.h"

inline constexpr char kJSScriptingSuite[] = "JavaScript Scripting Suite";
inline constexpr int32 kJSScriptingSuiteVersion2 = 2;

/// Not in use: nothing calls through this table, so it is left open.
struct JSScriptingSuite2;
