// Thin wrappers around the procedures of the host's callback records.
//
// Each runs its record's check (CallbackChecks.h) first, then calls the procedure of the same role
// with its arguments unchanged and returns the procedure's result. If the record is unavailable or
// the procedure is null, a wrapper does nothing and returns 0, a null pointer or handle, or the
// error `errPlugInHostInsufficient` (-30900), unless its comment says otherwise.
//
//   Handle name = HostCString2Handle(procs, "Layer 1");
//   if (name == nullptr) return memFullErr;
//   HostHandleCat(procs, name, suffix);
//   HostDisposeHandle(procs, name);
//
// New handles and buffers belong to the caller. [main-thread]
#pragma once

#include <PIGeneral.h>

#include <cstddef>

// --- buffers

/// The number of bytes that are left for buffers.
int32 HostBufferSpace(const BufferProcs* procs);
/// The same in 64 bits.
int64 HostBufferSpace64(const BufferProcs* procs);

/// Sets `*buffer` to null, then allocates a buffer of `size` bytes into it. Returns the host's
/// error, or `memFullErr` (-108) if the record is unavailable.
OSErr HostAllocateBuffer(const BufferProcs* procs, int32 size, BufferID* buffer);
/// The same with a 64-bit size.
OSErr HostAllocateBuffer64(const BufferProcs* procs, int64 size, BufferID* buffer);
/// The same for a strip buffer.
OSErr HostAllocateStripBuffer(const BufferProcs* procs, int32 size, BufferID* buffer);

/// Frees `buffer`.
void HostFreeBuffer(const BufferProcs* procs, BufferID buffer);
/// Locks `buffer`, moved high in memory if `moveHigh` is true, and returns its bytes.
Ptr HostLockBuffer(const BufferProcs* procs, BufferID buffer, Boolean moveHigh);
/// Unlocks `buffer`; the bytes that locking returned may move afterwards.
void HostUnlockBuffer(const BufferProcs* procs, BufferID buffer);

// --- resources of the document; indices start at 1

/// The number of resources of type `type`.
int16 HostCountPIResources(const ResourceProcs* procs, ResType type);
/// The resource `index` of type `type`; null if it does not exist. The handle remains the host's:
/// the caller must not change or dispose of it.
Handle HostGetPIResource(const ResourceProcs* procs, ResType type, int16 index);
/// Deletes the resource `index` of type `type`.
void HostDeletePIResource(const ResourceProcs* procs, ResType type, int16 index);
/// Adds a copy of `data` as a resource of type `type`; `data` remains the caller's.
OSErr HostAddPIResource(const ResourceProcs* procs, ResType type, Handle data);

// --- handles

/// A new handle of `size` bytes.
Handle HostNewHandle(const HandleProcs* procs, int32 size);
/// Disposes of `handle`.
void HostDisposeHandle(const HandleProcs* procs, Handle handle);
/// The size of `handle` in bytes.
int32 HostGetHandleSize(const HandleProcs* procs, Handle handle);
/// Resizes `handle` to `newSize` bytes.
OSErr HostSetHandleSize(const HandleProcs* procs, Handle handle, int32 newSize);
/// Locks `handle`, moved high in memory if `moveHigh` is true, and returns its bytes.
Ptr HostLockHandle(const HandleProcs* procs, Handle handle, Boolean moveHigh);
/// Unlocks `handle`; the bytes that locking returned may move afterwards.
void HostUnlockHandle(const HandleProcs* procs, Handle handle);

/// A new handle with a copy of the `size` bytes at `bytes`. Null if `size` is negative, or the
/// handle cannot be made or locked.
Handle HostCopy(const HandleProcs* procs, const void* bytes, int32 size);

/// A new handle with a copy of the contents of `source`. Null if `source` is null or its size is
/// negative, or a handle cannot be made or locked.
Handle HostHandleCopy(const HandleProcs* procs, Handle source);

/// Appends the contents of `source` to `destination`; the two may be the same. Returns `paramErr`
/// (-50) if one of them is null or has a negative size, the host's error if `destination` cannot
/// grow, and `memFullErr` (-108) if the sum exceeds 31 bits or a handle cannot be locked. After an
/// error `destination` has its old contents.
OSErr HostHandleCat(const HandleProcs* procs, Handle destination, Handle source);

/// Copies the text in `handle`, up to its first zero byte or its end, into the `room` bytes (at
/// least 1) at `text`, cut to fit, with a terminator. Returns `paramErr` (-50) if `handle` is null
/// or its size is negative, and `memFullErr` (-108) if it cannot be locked. After an error `text`
/// is empty.
OSErr HostHandle2CString(const HandleProcs* procs, Handle handle, char* text, std::size_t room);

/// The same into a length-prefixed string of at most 254 characters, with a zero byte at the end.
/// REQUIRES: `text` has 256 bytes.
OSErr HostHandle2PString(const HandleProcs* procs, Handle handle, unsigned char* text);

/// A new handle with the characters of the zero-terminated `text` (at most 32767), without the
/// terminator.
Handle HostCString2Handle(const HandleProcs* procs, const char* text);
/// A new handle with the characters of the length-prefixed `text`, without the length.
Handle HostPString2Handle(const HandleProcs* procs, const unsigned char* text);

/// A version number, as a handle stores it.
struct HostVersionNumbers {
  int32 major;
  int32 minor;
  int32 fix;
};

/// Reads three 32-bit integers from `handle`. Returns `paramErr` (-50) if `handle` is null or
/// shorter than 12 bytes and `memFullErr` (-108) if it cannot be locked; `*version` is not written
/// then.
OSErr HostHandle2Version(const HandleProcs* procs, Handle handle, HostVersionNumbers* version);

/// Writes the three numbers in `handle`, joined by ".", as a length-prefixed string with a zero
/// byte at the end, e.g. "7.0.1". If they cannot be read, the string is empty and the error of
/// HostHandle2Version is returned.
OSErr HostHandle2VersionString(const HandleProcs* procs, Handle handle, unsigned char* text);

// --- scripting parameters

/// Puts a copy of the object `value` of class `type` under `key`. `value` remains the caller's.
OSErr HostPutObj(const PIDescriptorParameters* procs, PIWriteDescriptor writer, DescriptorKeyID key,
                 DescriptorTypeID type, PIDescriptorHandle value);

/// Closes `*reader` and disposes of the handle that it read, `procs->descriptor`. Sets both to
/// null, even if `handleProcs` is unavailable and the handle is therefore not disposed of. Returns
/// the result of closing. If `procs` is unavailable, nothing changes.
OSErr HostCloseReader(PIDescriptorParameters* procs, const HandleProcs* handleProcs,
                      PIReadDescriptor* reader);

/// Disposes of `procs->descriptor`, if `handleProcs` is available, and sets it to null. Then closes
/// `*writer`, which stores the resulting handle in `procs->descriptor`, and sets `*writer` to null.
/// Returns the result of closing. If `procs` is unavailable, nothing changes.
OSErr HostCloseWriter(PIDescriptorParameters* procs, const HandleProcs* handleProcs,
                      PIWriteDescriptor* writer);

// --- colour services

/// A colour of the host: up to four components, depending on its space.
using CSColor = int16[4];
/// A colour with the components of an 8-bit image.
using CSPixel = uint8[4];

/// Sets the four components of `color`. [any-thread]
void CSSetColor(CSColor& color, int16 c0, int16 c1, int16 c2, int16 c3);
/// Copies four components. [any-thread]
void CSCopyColor(CSColor& destination, const CSColor& source);
/// Converts an image's components to the colour picker's, which have the same scale. [any-thread]
void CSToPicker(CSColor& color, const CSPixel& pixel);
/// Converts the colour picker's components to an image's, limited to 0 to 255. [any-thread]
void CSFromPicker(CSPixel& pixel, const CSColor& color);

/// Sets every field of `*info`: a request to convert black from RGB to RGB, reserved fields null.
/// [any-thread]
void CSInitInfo(ColorServicesInfo* info);

/// Converts `*color` in place from `sourceSpace` to `resultSpace`. Returns the host's error, -30900
/// if `colorProc` is null, or -1715 if `color` is. After an error `*color` is unchanged.
OSErr HostCSConvertColor(ColorServicesProc colorProc, int16 sourceSpace, int16 resultSpace,
                         CSColor* color);

/// Lets the user pick a colour. The picker shows the length-prefixed `prompt` and `*color`, a
/// colour of `sourceSpace`. Stores the picked colour in `*color` and, unless `picked` is null, in
/// `*picked`. `*resultSpace` is the space of the result; `plugIncolorServicesChosenSpace` leaves
/// the choice to the user, and the space chosen is stored in `*resultSpace`.
/// Returns -30900 if `colorProc` is null, else -1715 if `color`, `resultSpace` or `prompt` is null,
/// else the host's result (-128 if the user cancels). After an error nothing is stored.
OSErr HostCSPickColor(ColorServicesProc colorProc, const unsigned char* prompt, int16 sourceSpace,
                      int16* resultSpace, CSColor* color, CSColor* picked);

// --- texts and blocks

/// The texts that replace "^0" to "^3" in the host's messages: length-prefixed, with a zero byte at
/// the end.
struct PIParameterText {
  unsigned char parameter[4][256];
};

/// Fills all four texts from length-prefixed parameters. A null parameter gives an empty text; of
/// 255 characters the last is dropped. [any-thread]
void PIParamText(PIParameterText* text, const unsigned char* parameter0,
                 const unsigned char* parameter1, const unsigned char* parameter2,
                 const unsigned char* parameter3);

/// Copies `size` bytes; the two blocks may overlap. [any-thread]
void HostBlockMove(const void* source, void* destination, std::size_t size);
