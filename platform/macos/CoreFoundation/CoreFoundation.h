// Reference-counted strings, URLs, data and arrays of the platform's C object library.
// The caller owns an object returned by a function with Create or Copy in its name and releases it;
// it does not own what other functions return. [not documented as safe]
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
enum : CFIndex { kCFNotFound = -1 };
enum : CFIndex { kCFURLPOSIXPathStyle = 0 };
enum : CFURLBookmarkResolutionOptions {
  kCFURLBookmarkResolutionWithoutUIMask = 1UL << 8,
  kCFURLBookmarkResolutionWithoutMountingMask = 1UL << 9
};

extern "C" {

/// The default allocator.
extern const CFAllocatorRef kCFAllocatorDefault;

/// Gives up one reference to `cf`. REQUIRES: `cf` is not null.
void CFRelease(CFTypeRef cf);

/// Copies the text with a terminating zero byte into `buffer` of `bufferSize` bytes. Returns false,
/// with an empty text in the buffer, if it does not fit or cannot be converted to `encoding`: UTF-8
/// has no lone surrogates. REQUIRES: for UTF-8, `bufferSize` is at least 2; given 1, the
/// open-source version writes beyond the buffer.
Boolean CFStringGetCString(CFStringRef theString, char* buffer, CFIndex bufferSize,
                           CFStringEncoding encoding);

/// The URL of the file or folder `fsRef`; null if there is none.
CFURLRef CFURLCreateFromFSRef(CFAllocatorRef allocator, const struct FSRef* fsRef);

/// The path of a URL in the given style, without a trailing slash. The path of a relative URL stays
/// relative. Null if the path is not UTF-8.
CFStringRef CFURLCopyFileSystemPath(CFURLRef anURL, CFURLPathStyle pathStyle);

/// The constant string for a literal; equal texts give the same object.
CFStringRef __CFStringMakeConstantString(const char* cStr);

/// Makes a string of `numChars` UTF-16 code units.
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef alloc, const UniChar* chars,
                                         CFIndex numChars);

/// The length of a string in UTF-16 code units.
CFIndex CFStringGetLength(CFStringRef theString);

/// The maximum size in bytes, without a terminator, of `length` UTF-16 code units in `encoding`;
/// kCFNotFound if it exceeds the range of a CFIndex.
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);

/// Makes a data object with a copy of `length` bytes.
CFDataRef CFDataCreate(CFAllocatorRef allocator, const UInt8* bytes, CFIndex length);

/// The number of values in the array.
CFIndex CFArrayGetCount(CFArrayRef theArray);

/// The value at `idx`. REQUIRES: 0 <= `idx` < CFArrayGetCount(theArray).
const void* CFArrayGetValueAtIndex(CFArrayRef theArray, CFIndex idx);

/// Makes a file URL from a path of `bufLen` bytes. A relative path is resolved against the working
/// directory. The path of a file loses its trailing slashes. Returns null for a path that is empty
/// or contains a zero byte before its end.
CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef allocator, const UInt8* buffer,
                                                 CFIndex bufLen, Boolean isDirectory);

/// Copies the URL's path with a terminating zero byte. Returns false, with undefined contents, if
/// `url` is null or not a file URL, or if the path does not fit into `maxBufLen` bytes. An absolute
/// path that takes exactly `maxBufLen` bytes fits, but gets no terminator.
Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean resolveAgainstBase, UInt8* buffer,
                                         CFIndex maxBufLen);

/// The number of the bytes of `theData`, and their address, which is valid as long as the data are.
CFIndex CFDataGetLength(CFDataRef theData);
const UInt8* CFDataGetBytePtr(CFDataRef theData);

/// A property of the file to which bookmark data refer, as the data themselves hold it; null if
/// they do not hold it. Does not look for the file.
CFTypeRef CFURLCreateResourcePropertyForKeyFromBookmarkData(CFAllocatorRef allocator,
                                                            CFStringRef resourcePropertyKey,
                                                            CFDataRef bookmark);

/// The property that is the file's path, a string.
extern const CFStringRef kCFURLPathKey;

/// Makes bookmark data from which the file at `url` can be found later; null if the file does not
/// exist.
CFDataRef CFURLCreateBookmarkData(CFAllocatorRef allocator, CFURLRef url,
                                  CFURLBookmarkCreationOptions options,
                                  CFArrayRef resourcePropertiesToInclude, CFURLRef relativeToURL,
                                  CFErrorRef* error);

/// The URL of the file to which bookmark data refer; null if the file cannot be found.
CFURLRef CFURLCreateByResolvingBookmarkData(CFAllocatorRef allocator, CFDataRef bookmark,
                                            CFURLBookmarkResolutionOptions options,
                                            CFURLRef relativeToURL,
                                            CFArrayRef resourcePropertiesToInclude,
                                            Boolean* isStale, CFErrorRef* error);
}

#define CFSTR(cStr) __CFStringMakeConstantString("" cStr "")
