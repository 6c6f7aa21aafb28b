// Routines that stand beside the entry point; nothing in the plug-in's own flow calls them.
#include <CoreServices/CoreServices.h>
#include <sys/sysctl.h>

#include <cstring>

#include "hostutil/CallbackChecks.h"
#include "plugin/AutoPluginMain.h"

namespace {

/// What the beginning of a globals block points back to.
struct GlobalsHead {
  short* result;
  void* parameterBlock;
};

void* stamp(void* block, short* result, void* parameterBlock) {
  const GlobalsHead head = {result, parameterBlock};
  std::memcpy(block, &head, sizeof head);
  *result = 0;
  return block;
}

/// Locked where it lies high, so that it does not split the heap; null where that fails.
void* lockHigh(Handle handle, HandleProcs* procs) {
  if (!HostHandleProcsAvailable(procs, nullptr)) return nullptr;
  return procs->lockProc(handle, true);
}

Handle newHandle(std::size_t size, HandleProcs* procs) {
  if (!HostHandleProcsAvailable(procs, nullptr)) return nullptr;
  return procs->newProc(static_cast<std::int32_t>(size));
}

void disposeHandle(Handle handle, HandleProcs* procs) {
  if (HostHandleProcsAvailable(procs, nullptr)) procs->disposeProc(handle);
}

void* lockExisting(Handle handle, short* result, void* parameterBlock, HandleProcs* procs) {
  void* block = lockHigh(handle, procs);
  return block != nullptr ? stamp(block, result, parameterBlock) : nullptr;
}

}  // namespace

bool IsRunningNatively() {
  int native = 0;
  std::size_t size = sizeof native;
  if (sysctlbyname("sysctl.proc_native", &native, &size, nullptr, 0) != 0) return true;
  return native != 0;
}

bool HostPlayDialog(const PIDescriptorParameters* parameters) {
  return parameters->playInfo == plugInDialogDisplay;
}

void* AllocateGlobals(short* result, void* parameterBlock, HandleProcs* procs, std::size_t size,
                      Handle* handle, void (*initialise)(void*)) {
  if (*handle != nullptr) return lockExisting(*handle, result, parameterBlock, procs);
  Handle made = newHandle(size, procs);
  if (made == nullptr) return nullptr;
  void* block = lockExisting(made, result, parameterBlock, procs);
  if (block == nullptr) {
    disposeHandle(made, procs);
    return nullptr;
  }
  initialise(block);
  *handle = made;
  return block;
}
