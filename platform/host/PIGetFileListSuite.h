// The file-list suite: the host's open files.
#pragma once

#include "PIGeneral.h"

inline constexpr char kPSGetFileListSuite[] = "Photoshop GetFileList Suite for Plug-ins";
inline constexpr int32 kPSGetFileListSuiteVersion4 = 4;

/// No code calls through this table, so its members are not declared.
struct PSGetFileListSuite4;
