// Declares what the Mac's converters need, which the headers declare only on a Mac.
#pragma once

#include <CoreFoundation/CFString.h>

#include "CFStringEncodingConverterPriv.h"

typedef enum {
  _kCFStringFileSystemRepresentationErrorNone,
  _kCFStringFileSystemRepresentationErrorBufferFull,
  _kCFStringFileSystemRepresentationErrorEmbeddedNull,
  _kCFStringFileSystemRepresentationErrorUnpairedSurrogate
} _CFStringFileSystemRepresentationError;

extern UniChar const __CFMacRomanCharToUnicharTable[256];
extern const CFStringEncodingConverter __CFConverterMacRoman;
