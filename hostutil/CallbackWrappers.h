// Thin wrappers round the procedures of the host's callback records.
//
// Each asks its record's check (CallbackChecks.h) first, and calls the procedure of the same role
// with the arguments as they are. Where the host lacks the procedure, or hands over a record that
// cannot be used, a wrapper does nothing: numbers come back as 0, pointers and handles as null, and
// error codes as `errPlugInHostInsufficient` (-30900) unless it says otherwise.
//
//   Handle name = HostCString2Handle(procs, "Layer 1");
//   if (name == nullptr) return memFullErr;
//   HostHandleCat(procs, name, suffix);
//   HostDisposeHandle(procs, name);
//
// Everything that a wrapper returns as new belongs to the caller. [main-thread]
#pragma once

#include <PIGeneral.h>

#include <cstddef>

// --- buffers

/// The bytes that buffers can still have.
int32 HostBufferSpace(const BufferProcs* procs);
int64 HostBufferSpace64(const BufferProcs* procs);

/// Makes a buffer of `size` bytes. `*buffer` is null at first and wherever none is made; the error
/// is `memFullErr` where the host lacks the procedure.
OSErr HostAllocateBuffer(const BufferProcs* procs, int32 size, BufferID* buffer);
OSErr HostAllocateBuffer64(const BufferProcs* procs, int64 size, BufferID* buffer);
OSErr HostAllocateStripBuffer(const BufferProcs* procs, int32 size, BufferID* buffer);

void HostFreeBuffer(const BufferProcs* procs, BufferID buffer);
Ptr HostLockBuffer(const BufferProcs* procs, BufferID buffer, Boolean moveHigh);
void HostUnlockBuffer(const BufferProcs* procs, BufferID buffer);

// --- resources of the document; indices count from 1

int16 HostCountPIResources(const ResourceProcs* procs, ResType type);
/// The host's own handle: it is neither changed nor disposed of.
Handle HostGetPIResource(const ResourceProcs* procs, ResType type, int16 index);
void HostDeletePIResource(const ResourceProcs* procs, ResType type, int16 index);
/// Adds a copy of `data`.
OSErr HostAddPIResource(const ResourceProcs* procs, ResType type, Handle data);

// --- handles

Handle HostNewHandle(const HandleProcs* procs, int32 size);
void HostDisposeHandle(const HandleProcs* procs, Handle handle);
int32 HostGetHandleSize(const HandleProcs* procs, Handle handle);
OSErr HostSetHandleSize(const HandleProcs* procs, Handle handle, int32 newSize);
Ptr HostLockHandle(const HandleProcs* procs, Handle handle, Boolean moveHigh);
void HostUnlockHandle(const HandleProcs* procs, Handle handle);

/// A new handle with a copy of `size` bytes; null where there is no memory for it.
Handle HostCopy(const HandleProcs* procs, const void* bytes, int32 size);

/// A new handle with a copy of what `source` holds; null where that is null or memory runs out.
Handle HostHandleCopy(const HandleProcs* procs, Handle source);

/// Appends what `source` holds to `destination`; the two may be the same. The destination is left
/// as it is where it cannot grow (the error of the resizing comes back).
OSErr HostHandleCat(const HandleProcs* procs, Handle destination, Handle source);

/// Copies the text that `handle` holds, up to its first zero byte or its end, and ends it with a
/// zero byte within `room` bytes (at least 1). Returns `paramErr` and writes an empty text where
/// `handle` is null, `memFullErr` where it cannot be locked.
OSErr HostHandle2CString(const HandleProcs* procs, Handle handle, char* text, std::size_t room);

/// As above into a length-prefixed string, at most 254 characters, with a zero byte at the end.
OSErr HostHandle2PString(const HandleProcs* procs, Handle handle, unsigned char* text);

/// A new handle with the characters of a text, without a terminator or a length.
Handle HostCString2Handle(const HandleProcs* procs, const char* text);
Handle HostPString2Handle(const HandleProcs* procs, const unsigned char* text);

/// The version numbers that a handle holds as three 32-bit integers.
struct HostVersionNumbers {
  int32 major;
  int32 minor;
  int32 fix;
};

/// Reads the three numbers. A handle that is null or shorter gives `paramErr` and leaves `*version`
/// as it is.
OSErr HostHandle2Version(const HandleProcs* procs, Handle handle, HostVersionNumbers* version);

/// Writes the three numbers, joined by ".", as a length-prefixed string with a zero byte at the
/// end: "7.0.1". Where they cannot be read the string is empty.
OSErr HostHandle2VersionString(const HandleProcs* procs, Handle handle, unsigned char* text);

// --- scripting parameters

/// Puts a copy of the object `value` of class `type` under `key`.
OSErr HostPutObj(const PIDescriptorParameters* procs, PIWriteDescriptor writer, DescriptorKeyID key,
                 DescriptorTypeID type, PIDescriptorHandle value);

/// Closes `*reader`, disposes of the handle that it read (`procs->descriptor`) where `handleProcs`
/// can be used, and makes both null, even where that leaves the handle to the host. Returns what
/// closing returned. Where the descriptor record cannot be used nothing changes.
OSErr HostCloseReader(PIDescriptorParameters* procs, const HandleProcs* handleProcs,
                      PIReadDescriptor* reader);

/// Closes `*writer` and makes it null. The handle that closing leaves takes the place of
/// `procs->descriptor`, which is disposed of beforehand where `handleProcs` can be used. Returns
/// what closing returned. Where the descriptor record cannot be used nothing changes.
OSErr HostCloseWriter(PIDescriptorParameters* procs, const HandleProcs* handleProcs,
                      PIWriteDescriptor* writer);

// --- colour services

/// A colour of the host: four components, of which a space uses as many as it has.
using CSColor = int16[4];
/// A colour with the components of an 8-bit image.
using CSPixel = uint8[4];

void CSSetColor(CSColor& color, int16 c0, int16 c1, int16 c2, int16 c3);
void CSCopyColor(CSColor& destination, const CSColor& source);
/// From an image's components to the picker's, which have the same scale.
void CSToPicker(CSColor& color, const CSPixel& pixel);
/// Back again; what is beyond 0 to 255 becomes the nearest of the two.
void CSFromPicker(CSPixel& pixel, const CSColor& color);

/// Makes `*info` a request to convert black from RGB to RGB: every field has a value, everything
/// reserved is null.
void CSInitInfo(ColorServicesInfo* info);

/// Converts `color` from one space to another, in place. It stays as it is where that fails.
OSErr HostCSConvertColor(ColorServicesProc colorProc, int16 sourceSpace, int16 resultSpace,
                         CSColor* color);

/// Lets the user pick a colour: the picker shows `*color` of space `sourceSpace` and the
/// length-prefixed `prompt`. Once picked the colour, in `*resultSpace`, goes into `*color` and into
/// `*picked`; both stay as they are where nothing is picked. `*resultSpace` may be
/// `plugIncolorServicesChosenSpace`, and becomes the space that was chosen. `picked` may be null.
/// Returns -30900 where the procedure is missing, then -1715 where `color`, `resultSpace` or
/// `prompt` is.
OSErr HostCSPickColor(ColorServicesProc colorProc, const unsigned char* prompt, int16 sourceSpace,
                      int16* resultSpace, CSColor* color, CSColor* picked);

// --- texts and blocks

/// The texts that stand in for the host's "^0" to "^3": length-prefixed, with a zero byte at the
/// end.
struct PIParameterText {
  unsigned char parameter[4][256];
};

/// Fills all four texts; a null one becomes empty, and one of 255 characters loses the last.
void PIParamText(PIParameterText* text, const unsigned char* parameter0,
                 const unsigned char* parameter1, const unsigned char* parameter2,
                 const unsigned char* parameter3);

/// Copies `size` bytes; the two blocks may overlap. [any-thread]
void HostBlockMove(const void* source, void* destination, std::size_t size);
