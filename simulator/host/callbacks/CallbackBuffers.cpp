// Buffers: memory blocks with a lock count. All buffers share a limited space.
#include <fmt/format.h>

#include "simulator/host/callbacks/CallbackState.h"

namespace simulator {

namespace {

OSErr allocate(const char* procedure, int64 size, BufferID* buffer) {
  return callbackCall(procedure, [&] {
    CallbackState& state = callbackState();
    if (size < 0) throw CallError{paramErr};
    if (size > state.bufferSpace) throw CallError{memFullErr};
    auto bytes = std::make_unique<char[]>(static_cast<std::size_t>(size) + 1);
    destination(buffer) = state.buffers.add({std::move(bytes), size}, procedure);
    state.bufferSpace -= size;
  });
}

BufferBody& find(const char* procedure, BufferID buffer) {
  return callbackState().buffers.at(buffer, procedure);
}

Ptr lock(BufferID buffer, Boolean) {
  constexpr const char* procedure = "Buffer.lockProc";
  return callbackAnswer<Ptr>(procedure, nullptr, [&] {
    BufferBody& body = find(procedure, buffer);
    ++body.locks;
    return body.bytes.get();
  });
}

void unlock(BufferID buffer) {
  constexpr const char* procedure = "Buffer.unlockProc";
  callbackDo(procedure, [&] {
    BufferBody& body = find(procedure, buffer);
    if (body.locks > 0) {
      --body.locks;
    } else {
      theLog().misuse(fmt::format("{}: the buffer is not locked", procedure));
    }
  });
}

void release(BufferID buffer) {
  constexpr const char* procedure = "Buffer.freeProc";
  callbackDo(procedure, [&] {
    const BufferBody& body = find(procedure, buffer);
    if (body.locks > 0) theLog().misuse(fmt::format("{}: the buffer is locked", procedure));
    callbackState().bufferSpace += body.size;
    callbackState().buffers.free(buffer, procedure);
  });
}

constexpr int64 kMostIn32Bits = 0x7FFFFFFF;

int32 space() {
  return callbackAnswer<int32>("Buffer.spaceProc", 0, [] {
    return static_cast<int32>(std::min(callbackState().bufferSpace, kMostIn32Bits));
  });
}

int64 space64() {
  return callbackAnswer<int64>("Buffer.spaceProc64", 0, [] { return callbackState().bufferSpace; });
}

constexpr BufferProcs kBufferProcs = {
    .bufferProcsVersion = 0,
    .numBufferProcs = 0,
    .allocateProc = [](int32 size,
                       BufferID* buffer) { return allocate("Buffer.allocateProc", size, buffer); },
    .lockProc = lock,
    .unlockProc = unlock,
    .freeProc = release,
    .spaceProc = space,
    .allocateProc64 =
        [](int64 size, BufferID* buffer) {
          return allocate("Buffer.allocateProc64", size, buffer);
        },
    .spaceProc64 = space64,
    .allocateStripProc =
        [](int32 size, BufferID* buffer) {
          return allocate("Buffer.allocateStripProc", size, buffer);
        },
};

}  // namespace

BufferProcs bufferProcs(int16 version, int16 count) {
  return cutRecord(kBufferProcs, version, count);
}

void Callbacks::setBufferSpace(int64 bytes) { callbackState().bufferSpace = bytes; }

}  // namespace simulator
