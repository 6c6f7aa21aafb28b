// Wrappers for the contents of handles: copies, texts and version numbers.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>

#include "hostutil/CallbackChecks.h"
#include "hostutil/CallbackWrappers.h"
#include "hostutil/Strings.h"

namespace {

/// Locks a handle for its lifetime. `bytes` is null if the handle cannot be locked.
class LockedHandle {
 public:
  LockedHandle(const HandleProcs* procs, Handle handle)
      : procs_(procs), handle_(handle), bytes_(HostLockHandle(procs, handle, false)) {}
  LockedHandle(const LockedHandle&) = delete;
  LockedHandle& operator=(const LockedHandle&) = delete;
  ~LockedHandle() {
    if (bytes_ != nullptr) HostUnlockHandle(procs_, handle_);
  }

  Ptr bytes() const { return bytes_; }

 private:
  const HandleProcs* procs_;
  Handle handle_;
  Ptr bytes_;
};

/// Sets `*size` to the size of a handle. The error if the record or the handle cannot be used;
/// `*size` is 0 then.
OSErr readSize(const HandleProcs* procs, Handle handle, std::size_t* size) {
  *size = 0;
  if (!HostHandleProcsAvailable(procs)) return errPlugInHostInsufficient;
  if (handle == nullptr) return paramErr;
  const int32 reported = HostGetHandleSize(procs, handle);
  if (reported < 0) return paramErr;
  *size = static_cast<std::size_t>(reported);
  return noErr;
}

/// Copies `size` bytes to `offset` in the handle; false if it cannot be locked.
bool write(const HandleProcs* procs, Handle handle, std::size_t offset, const void* bytes,
           std::size_t size) {
  const LockedHandle locked(procs, handle);
  if (locked.bytes() == nullptr) return false;
  std::copy_n(static_cast<const char*>(bytes), size, locked.bytes() + offset);
  return true;
}

/// Copies at most `room` bytes of the handle's text, without a terminator, and sets `*length`.
OSErr readText(const HandleProcs* procs, Handle handle, char* text, std::size_t room,
               std::size_t* length) {
  *length = 0;
  std::size_t size;
  if (const OSErr error = readSize(procs, handle, &size)) return error;
  const LockedHandle locked(procs, handle);
  if (locked.bytes() == nullptr) return memFullErr;
  const char* const end = std::find(locked.bytes(), locked.bytes() + std::min(size, room), '\0');
  *length = static_cast<std::size_t>(end - locked.bytes());
  std::copy_n(locked.bytes(), *length, text);
  return noErr;
}

/// Adds two sizes; false if the sum exceeds 31 bits.
bool addSizes(std::size_t a, std::size_t b, int32* sum) {
  constexpr std::size_t kMost = std::numeric_limits<int32>::max();
  if (a + b > kMost) return false;
  *sum = static_cast<int32>(a + b);
  return true;
}

}  // namespace

Handle HostCopy(const HandleProcs* procs, const void* bytes, int32 size) {
  if (size < 0) return nullptr;
  const Handle copy = HostNewHandle(procs, size);
  if (copy == nullptr || write(procs, copy, 0, bytes, static_cast<std::size_t>(size))) return copy;
  HostDisposeHandle(procs, copy);
  return nullptr;
}

Handle HostHandleCopy(const HandleProcs* procs, Handle source) {
  std::size_t size;
  if (readSize(procs, source, &size) != noErr) return nullptr;
  const LockedHandle locked(procs, source);
  if (locked.bytes() == nullptr) return nullptr;
  return HostCopy(procs, locked.bytes(), static_cast<int32>(size));
}

OSErr HostHandleCat(const HandleProcs* procs, Handle destination, Handle source) {
  std::size_t before;
  std::size_t added;
  if (const OSErr error = readSize(procs, destination, &before)) return error;
  if (const OSErr error = readSize(procs, source, &added)) return error;
  int32 size;
  if (!addSizes(before, added, &size)) return memFullErr;
  if (const OSErr error = HostSetHandleSize(procs, destination, size)) return error;
  // Lock `source` only now: it may be the same handle, and a block may move when it grows.
  const LockedHandle locked(procs, source);
  if (locked.bytes() != nullptr && write(procs, destination, before, locked.bytes(), added)) {
    return noErr;
  }
  HostSetHandleSize(procs, destination, static_cast<int32>(before));
  return memFullErr;
}

OSErr HostHandle2CString(const HandleProcs* procs, Handle handle, char* text, std::size_t room) {
  std::size_t length;
  const OSErr error = readText(procs, handle, text, room - 1, &length);
  text[length] = 0;
  return error;
}

OSErr HostHandle2PString(const HandleProcs* procs, Handle handle, unsigned char* text) {
  std::size_t length;
  const OSErr error = readText(procs, handle, reinterpret_cast<char*>(text) + 1,
                               kLongestTerminatedPString, &length);
  text[0] = static_cast<unsigned char>(length);
  text[length + 1] = 0;
  return error;
}

Handle HostCString2Handle(const HandleProcs* procs, const char* text) {
  return HostCopy(procs, text, PIstrlen(text));
}

Handle HostPString2Handle(const HandleProcs* procs, const unsigned char* text) {
  return HostCopy(procs, text + 1, text[0]);
}

OSErr HostHandle2Version(const HandleProcs* procs, Handle handle, HostVersionNumbers* version) {
  std::size_t size;
  if (const OSErr error = readSize(procs, handle, &size)) return error;
  if (size < sizeof *version) return paramErr;
  const LockedHandle locked(procs, handle);
  if (locked.bytes() == nullptr) return memFullErr;
  std::memcpy(version, locked.bytes(), sizeof *version);
  return noErr;
}

OSErr HostHandle2VersionString(const HandleProcs* procs, Handle handle, unsigned char* text) {
  HostVersionNumbers version;
  text[0] = text[1] = 0;
  if (const OSErr error = HostHandle2Version(procs, handle, &version)) return error;
  char numbers[40];
  std::snprintf(numbers, sizeof numbers, "%d.%d.%d", version.major, version.minor, version.fix);
  CToPStr(numbers, text);
  return noErr;
}
