// The scripting suite.
#pragma once

#include "PIGeneral.h"

inline constexpr char kJSScriptingSuite[] = "JavaScript Scripting Suite";
inline constexpr int32 kJSScriptingSuiteVersion2 = 2;

/// No code calls through this table, so its members are not declared.
struct JSScriptingSuite2;
