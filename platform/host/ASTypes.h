// Basic types of the string suite.
#pragma once

#include "PITypes.h"

using ASErr = int32;
using ASInt16 = int16;
using ASInt32 = int32;
using ASUInt32 = uint32;
using ASBoolean = unsigned char;
/// A UTF-16 code unit.
using ASUnicode = uint16;
