// Basic types of the Mac's C interfaces, as on 64-bit Intel.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/FourCharCode.h"

using Boolean = unsigned char;
using UInt8 = unsigned char;
using SInt8 = signed char;
using UInt16 = unsigned short;
using SInt16 = short;
using UInt32 = unsigned int;
using SInt32 = int;
using UInt64 = unsigned long long;
using SInt64 = long long;

using OSErr = SInt16;
using OSStatus = SInt32;
using OptionBits = UInt32;
using ByteCount = unsigned long;
using ItemCount = unsigned long;
using FourCharCode = UInt32;
using OSType = FourCharCode;
using ResType = FourCharCode;
using PBVersion = UInt32;
using Size = long;
using Fixed = SInt32;
using Ptr = char*;
using Handle = Ptr*;

/// Length-prefixed text: the first byte is the number of characters that follow.
using Str255 = unsigned char[256];
using StringPtr = unsigned char*;
using ConstStr255Param = const unsigned char*;

/// A point in whole pixels, vertical coordinate first.
struct Point {
  short v;
  short h;
};

/// A rectangle in whole pixels.
struct Rect {
  short top;
  short left;
  short bottom;
  short right;
};

enum { noErr = 0, fnfErr = -43, paramErr = -50, memFullErr = -108 };

extern "C" {

/// Writes a message to the system's debugger log. [not documented as safe]
void DebugStr(ConstStr255Param debuggerMsg);
}
