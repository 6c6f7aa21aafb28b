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
using CFArrayRef = const struct __CFArray*;
using CFErrorRef = struct __CFError*;
using UniChar = UInt16;
using CFStringEncoding = UInt32;
using CFTimeInterval = double;
using CFURLPathStyle = CFIndex;
using CFURLBookmarkCreationOptions = CFOptionFlags;
using CFURLBookmarkResolutionOptions = CFOptionFlags;
struct FSRef;

enum : CFStringEncoding { kCFStringEncodingMacRoman = 0, kCFStringEncodingUTF8 = 0x08000100 };
enum : CFIndex { kCFURLPOSIXPathStyle = 0 };
enum : CFURLBookmarkResolutionOptions {
  kCFURLBookmarkResolutionWithoutUIMask = 1UL << 8,
  kCFURLBookmarkResolutionWithoutMountingMask = 1UL << 9
};

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

/// The constant string object for a literal; the same one for the same text.
CFStringRef __CFStringMakeConstantString(const char* cStr);

/// A string of `numChars` UTF-16 code units.
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef alloc, const UniChar* chars,
                                         CFIndex numChars);

/// The length of a string in UTF-16 code units.
CFIndex CFStringGetLength(CFStringRef theString);

/// The most bytes, without a terminator, that `length` UTF-16 code units take in `encoding`.
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);

/// Data with a copy of `length` bytes.
CFDataRef CFDataCreate(CFAllocatorRef allocator, const UInt8* bytes, CFIndex length);

CFIndex CFArrayGetCount(CFArrayRef theArray);

/// The value at `idx`, lent. REQUIRES: 0 <= `idx` < CFArrayGetCount(theArray).
const void* CFArrayGetValueAtIndex(CFArrayRef theArray, CFIndex idx);

/// The file URL of a path of `bufLen` bytes, taken against the working directory where it is
/// relative; null for the empty path.
CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef allocator, const UInt8* buffer,
                                                 CFIndex bufLen, Boolean isDirectory);

/// Copies the URL's path with a terminating zero byte. False for a null `url`, for one that names
/// no file, and where the path does not fit into `maxBufLen` bytes.
Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean resolveAgainstBase, UInt8* buffer,
                                         CFIndex maxBufLen);

/// Data from which the file at `url` can be found again; null where there is no such file.
CFDataRef CFURLCreateBookmarkData(CFAllocatorRef allocator, CFURLRef url,
                                  CFURLBookmarkCreationOptions options,
                                  CFArrayRef resourcePropertiesToInclude, CFURLRef relativeToURL,
                                  CFErrorRef* error);

/// The URL of the file that bookmark data leads to; null where it leads nowhere.
CFURLRef CFURLCreateByResolvingBookmarkData(CFAllocatorRef allocator, CFDataRef bookmark,
                                            CFURLBookmarkResolutionOptions options,
                                            CFURLRef relativeToURL,
                                            CFArrayRef resourcePropertiesToInclude,
                                            Boolean* isStale, CFErrorRef* error);
}

#define CFSTR(cStr) __CFStringMakeConstantString("" cStr "")
