// Relocatable blocks.
#include <utility>

#include "simulator/host/model/HostCall.h"
#include "simulator/host/suites/Suites.h"
#include "simulator/macos/MemoryHandles.h"

namespace simulator {

namespace {

Handle make(int32 size) {
  constexpr const char* procedure = "HandleSuite2.New";
  return hostAnswer<Handle>(SuiteId::handle, procedure, nullptr, [&] {
    if (size < 0) throw CallError{paramErr};
    return theMemoryHandles().make(static_cast<std::size_t>(size), procedure);
  });
}

// No order to fail reaches the procedures without a result.
void dispose(Handle handle, const char* procedure) {
  const HostEntry entry(SuiteId::handle, procedure);
  outcome([&] { theMemoryHandles().dispose(handle, procedure); });
}

void setLock(Handle handle, Boolean lock, Ptr* address, Boolean* oldLock) {
  constexpr const char* procedure = "HandleSuite2.SetLock";
  const HostEntry entry(SuiteId::handle, procedure);
  outcome([&] {
    const bool before = theMemoryHandles().setLock(handle, lock != 0, procedure);
    if (oldLock) *oldLock = before;
    if (address) *address = *handle;
  });
}

int32 getSize(Handle handle) {
  constexpr const char* procedure = "HandleSuite2.GetSize";
  return hostAnswer<int32>(SuiteId::handle, procedure, 0, [&] {
    return static_cast<int32>(theMemoryHandles().size(handle, procedure));
  });
}

OSErr setSize(Handle handle, int32 size) {
  constexpr const char* procedure = "HandleSuite2.SetSize";
  return hostCall<OSErr>(SuiteId::handle, procedure, [&] {
    if (size < 0) throw CallError{paramErr};
    theMemoryHandles().resize(handle, static_cast<std::size_t>(size), procedure);
  });
}

}  // namespace

const PSHandleSuite2 handleSuite = {
    .New = make,
    .Dispose = [](Handle handle) { dispose(handle, "HandleSuite2.Dispose"); },
    .DisposeRegularHandle =
        [](Handle handle) { dispose(handle, "HandleSuite2.DisposeRegularHandle"); },
    .SetLock = setLock,
    .GetSize = getSize,
    .SetSize = setSize,
};

}  // namespace simulator
