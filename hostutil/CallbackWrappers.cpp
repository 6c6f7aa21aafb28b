// Wrappers for buffers, resources, handles and parameter texts.
#include "hostutil/CallbackWrappers.h"

#include <cstring>

#include "hostutil/CallbackChecks.h"
#include "hostutil/Strings.h"

int32 HostBufferSpace(const BufferProcs* procs) {
  return HostBufferProcsAvailable(procs) ? procs->spaceProc() : 0;
}

int64 HostBufferSpace64(const BufferProcs* procs) {
  return HostBufferProcsAvailable(procs) ? procs->spaceProc64() : 0;
}

OSErr HostAllocateBuffer(const BufferProcs* procs, int32 size, BufferID* buffer) {
  *buffer = nullptr;
  return HostBufferProcsAvailable(procs) ? procs->allocateProc(size, buffer) : OSErr{memFullErr};
}

OSErr HostAllocateBuffer64(const BufferProcs* procs, int64 size, BufferID* buffer) {
  *buffer = nullptr;
  return HostBufferProcsAvailable(procs) ? procs->allocateProc64(size, buffer) : OSErr{memFullErr};
}

OSErr HostAllocateStripBuffer(const BufferProcs* procs, int32 size, BufferID* buffer) {
  *buffer = nullptr;
  if (!HostBufferProcsAvailable(procs)) return memFullErr;
  return procs->allocateStripProc(size, buffer);
}

void HostFreeBuffer(const BufferProcs* procs, BufferID buffer) {
  if (HostBufferProcsAvailable(procs)) procs->freeProc(buffer);
}

Ptr HostLockBuffer(const BufferProcs* procs, BufferID buffer, Boolean moveHigh) {
  return HostBufferProcsAvailable(procs) ? procs->lockProc(buffer, moveHigh) : nullptr;
}

void HostUnlockBuffer(const BufferProcs* procs, BufferID buffer) {
  if (HostBufferProcsAvailable(procs)) procs->unlockProc(buffer);
}

int16 HostCountPIResources(const ResourceProcs* procs, ResType type) {
  return HostResourceProcsAvailable(procs) ? procs->countProc(type) : int16{0};
}

Handle HostGetPIResource(const ResourceProcs* procs, ResType type, int16 index) {
  return HostResourceProcsAvailable(procs) ? procs->getProc(type, index) : nullptr;
}

void HostDeletePIResource(const ResourceProcs* procs, ResType type, int16 index) {
  if (HostResourceProcsAvailable(procs)) procs->deleteProc(type, index);
}

OSErr HostAddPIResource(const ResourceProcs* procs, ResType type, Handle data) {
  if (!HostResourceProcsAvailable(procs)) return errPlugInHostInsufficient;
  return procs->addProc(type, data);
}

Handle HostNewHandle(const HandleProcs* procs, int32 size) {
  return HostHandleProcsAvailable(procs) ? procs->newProc(size) : nullptr;
}

void HostDisposeHandle(const HandleProcs* procs, Handle handle) {
  if (HostHandleProcsAvailable(procs)) procs->disposeProc(handle);
}

int32 HostGetHandleSize(const HandleProcs* procs, Handle handle) {
  return HostHandleProcsAvailable(procs) ? procs->getSizeProc(handle) : 0;
}

OSErr HostSetHandleSize(const HandleProcs* procs, Handle handle, int32 newSize) {
  if (!HostHandleProcsAvailable(procs)) return errPlugInHostInsufficient;
  return procs->setSizeProc(handle, newSize);
}

// The check covers the first four procedures only; lock and unlock are the fifth and sixth.
Ptr HostLockHandle(const HandleProcs* procs, Handle handle, Boolean moveHigh) {
  if (!HostHandleProcsAvailable(procs) || procs->lockProc == nullptr) return nullptr;
  return procs->lockProc(handle, moveHigh);
}

void HostUnlockHandle(const HandleProcs* procs, Handle handle) {
  if (!HostHandleProcsAvailable(procs) || procs->unlockProc == nullptr) return;
  procs->unlockProc(handle);
}

void PIParamText(PIParameterText* text, const unsigned char* parameter0,
                 const unsigned char* parameter1, const unsigned char* parameter2,
                 const unsigned char* parameter3) {
  const unsigned char* const parameters[4] = {parameter0, parameter1, parameter2, parameter3};
  for (int i = 0; i < 4; ++i) {
    unsigned char* const filled = text->parameter[i];
    filled[0] = filled[1] = 0;
    if (parameters[i] != nullptr) AppendString(filled, parameters[i], 1, parameters[i][0]);
  }
}

void HostBlockMove(const void* source, void* destination, std::size_t size) {
  std::memmove(destination, source, size);
}
