#include "hostutil/CallbackChecks.h"

bool HostHandleProcsAvailable(const HandleProcs* procs, bool* newerVersion) {
  if (procs == nullptr) return false;
  if (procs->handleProcsVersion > 1 && newerVersion != nullptr) *newerVersion = true;
  return procs->handleProcsVersion == 1 && procs->numHandleProcs >= 8 &&
         procs->newProc != nullptr && procs->disposeProc != nullptr &&
         procs->getSizeProc != nullptr && procs->setSizeProc != nullptr;
}
