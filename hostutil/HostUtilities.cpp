#include "hostutil/HostUtilities.h"

#include <sys/sysctl.h>

#include <cstdint>
#include <cstring>
#include <utility>

#include "hostutil/CallbackWrappers.h"

namespace {

/// The beginning of every globals block.
struct GlobalsHead {
  short* result;
  void* parameterBlock;
};

/// Locks the block, moved high in memory to keep the heap unfragmented, and writes its head and
/// `*result`. Null if it cannot be locked.
void* lockAndStamp(Handle handle, short* result, void* parameterBlock, const HandleProcs* procs) {
  void* block = HostLockHandle(procs, handle, true);
  if (block == nullptr) return nullptr;
  const GlobalsHead head = {result, parameterBlock};
  std::memcpy(block, &head, sizeof head);
  *result = 0;
  return block;
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
  if (*handle != nullptr) return lockAndStamp(*handle, result, parameterBlock, procs);
  if (!std::in_range<std::int32_t>(size)) return nullptr;
  const Handle made = HostNewHandle(procs, static_cast<std::int32_t>(size));
  if (made == nullptr) return nullptr;
  void* block = lockAndStamp(made, result, parameterBlock, procs);
  if (block == nullptr) {
    HostDisposeHandle(procs, made);
    return nullptr;
  }
  initialise(block);
  *handle = made;
  return block;
}
