// The file-list suite: the host's open files.
#pragma once

#include "PIGeneral.h"

inline constexpr char kPSGetFileListSuite[] = "Photoshop GetFileList Suite for Plug-ins";
inline constexpr int32 kPSGetFileListSuiteVersion4 = 4;

/// Not in use: nothing calls through this table, so it is left open.
struct PSGetFileListSuite4;
