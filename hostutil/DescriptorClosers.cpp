// Wrappers for scripting parameters: putting an object, closing readers and writers.
#include <utility>

#include "hostutil/CallbackChecks.h"
#include "hostutil/CallbackWrappers.h"

namespace {

void disposeDescriptor(PIDescriptorParameters* procs, const HandleProcs* handleProcs) {
  const PIDescriptorHandle descriptor = std::exchange(procs->descriptor, nullptr);
  if (descriptor != nullptr) HostDisposeHandle(handleProcs, descriptor);
}

}  // namespace

// The check does not look at the procedures themselves, so each wrapper tests its own for null.

OSErr HostPutObj(const PIDescriptorParameters* procs, PIWriteDescriptor writer, DescriptorKeyID key,
                 DescriptorTypeID type, PIDescriptorHandle value) {
  if (!HostDescriptorAvailable(procs)) return errPlugInHostInsufficient;
  const PutObjectProc put = procs->writeDescriptorProcs->putObjectProc;
  return put != nullptr ? put(writer, key, type, value) : errPlugInHostInsufficient;
}

OSErr HostCloseReader(PIDescriptorParameters* procs, const HandleProcs* handleProcs,
                      PIReadDescriptor* reader) {
  if (!HostDescriptorAvailable(procs)) return errPlugInHostInsufficient;
  const CloseReadDescriptorProc close = procs->readDescriptorProcs->closeReadDescriptorProc;
  if (close == nullptr) return errPlugInHostInsufficient;
  const OSErr result = close(*reader);
  disposeDescriptor(procs, handleProcs);
  *reader = nullptr;
  return result;
}

OSErr HostCloseWriter(PIDescriptorParameters* procs, const HandleProcs* handleProcs,
                      PIWriteDescriptor* writer) {
  if (!HostDescriptorAvailable(procs)) return errPlugInHostInsufficient;
  const CloseWriteDescriptorProc close = procs->writeDescriptorProcs->closeWriteDescriptorProc;
  if (close == nullptr) return errPlugInHostInsufficient;
  disposeDescriptor(procs, handleProcs);
  const OSErr result = close(*writer, &procs->descriptor);
  *writer = nullptr;
  return result;
}
