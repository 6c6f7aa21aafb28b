// Reference-counted objects, strings and URLs of the platform's C object library.
// Functions with Create or Copy in their names hand over a reference that the caller releases;
// all others lend theirs. Everything here may be called from any thread.
#pragma once

#include <MacTypes.h>

using CFIndex = long;
using CFOptionFlags = unsigned long;
using CFTypeRef = const void*;
using CFAllocatorRef = const struct __CFAllocator*;
using CFDataRef = const struct __CFData*;
using CFStringRef = const struct __CFString*;
using CFURLRef = const struct __CFURL*;
using CFStringEncoding = UInt32;
using CFTimeInterval = double;
using CFURLPathStyle = CFIndex;
struct FSRef;

enum : CFStringEncoding { kCFStringEncodingMacRoman = 0, kCFStringEncodingUTF8 = 0x08000100 };
enum : CFIndex { kCFURLPOSIXPathStyle = 0 };

extern "C" {

/// The default allocator.
extern const CFAllocatorRef kCFAllocatorDefault;

/// Gives one reference to `cf` back. REQUIRES: `cf` is not null.
void CFRelease(CFTypeRef cf);

/// Copies the text with a terminating zero byte into `buffer` of `bufferSize` bytes. False, with
/// the buffer's contents undefined, where it does not fit or cannot be converted.
Boolean CFStringGetCString(CFStringRef theString, char* buffer, CFIndex bufferSize,
                           CFStringEncoding encoding);

/// The URL of a file-system object, null where there is none.
CFURLRef CFURLCreateFromFSRef(CFAllocatorRef allocator, const struct FSRef* fsRef);

/// The path of a URL in the style asked for, without a trailing slash.
CFStringRef CFURLCopyFileSystemPath(CFURLRef anURL, CFURLPathStyle pathStyle);
}
