// Relocatable memory blocks.
#include <utility>

#include "simulator/host/model/HostCall.h"
#include "simulator/host/suites/Suites.h"
#include "simulator/macos/MemoryHandles.h"

namespace simulator {

namespace handle_suite {
namespace {

Handle make(const char* procedure, int32 size) {
  return hostAnswer<Handle>(SuiteId::handle, procedure, nullptr, [&] {
    if (size < 0) throw CallError{paramErr};
    return theMemoryHandles().make(static_cast<std::size_t>(size), procedure);
  });
}

// Procedures without a result cannot be made to fail.
void dispose(const char* procedure, Handle handle) {
  const HostEntry entry(SuiteId::handle, procedure);
  outcome([&] { theMemoryHandles().dispose(handle, procedure); });
}

void setLock(const char* procedure, Handle handle, Boolean lock, Ptr* address, Boolean* oldLock) {
  const HostEntry entry(SuiteId::handle, procedure);
  outcome([&] {
    const bool before = theMemoryHandles().setLock(handle, lock != 0, procedure);
    if (oldLock) *oldLock = before;
    if (address) *address = *handle;
  });
}

int32 getSize(const char* procedure, Handle handle) {
  return hostAnswer<int32>(SuiteId::handle, procedure, 0, [&] {
    return static_cast<int32>(theMemoryHandles().size(handle, procedure));
  });
}

OSErr setSize(const char* procedure, Handle handle, int32 size) {
  return hostCall<OSErr>(SuiteId::handle, procedure, [&] {
    if (size < 0) throw CallError{paramErr};
    theMemoryHandles().resize(handle, static_cast<std::size_t>(size), procedure);
  });
}

constexpr auto kProcedures = std::to_array<Procedure<PSHandleSuite2>>({
    row<"HandleSuite2.New", &PSHandleSuite2::New, make>,
    row<"HandleSuite2.Dispose", &PSHandleSuite2::Dispose, dispose>,
    row<"HandleSuite2.DisposeRegularHandle", &PSHandleSuite2::DisposeRegularHandle, dispose>,
    row<"HandleSuite2.SetLock", &PSHandleSuite2::SetLock, setLock>,
    row<"HandleSuite2.GetSize", &PSHandleSuite2::GetSize, getSize>,
    row<"HandleSuite2.SetSize", &PSHandleSuite2::SetSize, setSize>,
});

}  // namespace
}  // namespace handle_suite

constinit const HostSuite<PSHandleSuite2> handleSuite = suiteOf<handle_suite::kProcedures>();

}  // namespace simulator
