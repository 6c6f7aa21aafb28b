// Handles, and the document's resources, which are stored in handles.
#include "simulator/host/callbacks/CallbackState.h"
#include "simulator/macos/MemoryHandles.h"

namespace simulator {

namespace {

MemoryHandles& handles() { return theMemoryHandles(); }

Handle make(int32 size) {
  constexpr const char* procedure = "Handle.newProc";
  return callbackAnswer<Handle>(procedure, nullptr, [&] {
    if (size < 0) throw CallError{paramErr};
    return handles().make(static_cast<std::size_t>(size), procedure);
  });
}

void dispose(const char* procedure, Handle handle) {
  callbackDo(procedure, [&] { handles().dispose(handle, procedure); });
}

int32 getSize(Handle handle) {
  constexpr const char* procedure = "Handle.getSizeProc";
  return callbackAnswer<int32>(
      procedure, 0, [&] { return static_cast<int32>(handles().size(handle, procedure)); });
}

OSErr setSize(Handle handle, int32 size) {
  constexpr const char* procedure = "Handle.setSizeProc";
  return callbackCall(procedure, [&] {
    if (size < 0) throw CallError{paramErr};
    handles().resize(handle, static_cast<std::size_t>(size), procedure);
  });
}

Ptr lock(Handle handle, Boolean) {
  constexpr const char* procedure = "Handle.lockProc";
  return callbackAnswer<Ptr>(procedure, nullptr, [&] {
    handles().setLock(handle, true, procedure);
    return *handle;
  });
}

void unlock(Handle handle) {
  constexpr const char* procedure = "Handle.unlockProc";
  callbackDo(procedure, [&] { handles().setLock(handle, false, procedure); });
}

constexpr HandleProcs kHandleRecord = {
    .handleProcsVersion = 0,
    .numHandleProcs = 0,
    .newProc = make,
    .disposeProc = [](Handle handle) { dispose("Handle.disposeProc", handle); },
    .getSizeProc = getSize,
    .setSizeProc = setSize,
    .lockProc = lock,
    .unlockProc = unlock,
    .recoverSpaceProc = [](int32) {},
    .disposeRegularHandleProc =
        [](Handle handle) { dispose("Handle.disposeRegularHandleProc", handle); },
};

using Resources = std::vector<ResourceBody>;

// The resource of this type and index, counted from 1; end() if it does not exist.
Resources::iterator find(ResType type, int16 index) {
  Resources& resources = callbackState().resources;
  return std::find_if(resources.begin(), resources.end(), [&](const ResourceBody& resource) {
    return resource.type == type && --index == 0;
  });
}

void add(ResType type, std::string_view bytes) {
  callbackState().resources.push_back({type, handles().make(bytes, nullptr)});
}

int16 countResources(ResType type) {
  return callbackAnswer<int16>("Resource.countProc", 0, [&] {
    const Resources& resources = callbackState().resources;
    return static_cast<int16>(
        std::count_if(resources.begin(), resources.end(),
                      [&](const ResourceBody& resource) { return resource.type == type; }));
  });
}

Handle getResource(ResType type, int16 index) {
  return callbackAnswer<Handle>("Resource.getProc", nullptr, [&] {
    const auto found = find(type, index);
    return found == callbackState().resources.end() ? nullptr : found->handle;
  });
}

void deleteResource(ResType type, int16 index) {
  constexpr const char* procedure = "Resource.deleteProc";
  callbackDo(procedure, [&] {
    const auto found = find(type, index);
    if (found == callbackState().resources.end()) return;
    handles().dispose(found->handle, procedure);
    callbackState().resources.erase(found);
  });
}

OSErr addResourceFrom(ResType type, Handle data) {
  constexpr const char* procedure = "Resource.addProc";
  return callbackCall(procedure, [&] { add(type, std::string(handles().bytes(data, procedure))); });
}

constexpr ResourceProcs kResourceRecord = {
    .resourceProcsVersion = 0,
    .numResourceProcs = 0,
    .countProc = countResources,
    .getProc = getResource,
    .deleteProc = deleteResource,
    .addProc = addResourceFrom,
};

}  // namespace

HandleProcs handleProcs(int16 version, int16 count) {
  return cutRecord(kHandleRecord, version, count);
}

ResourceProcs resourceProcs(int16 version, int16 count) {
  return cutRecord(kResourceRecord, version, count);
}

void Callbacks::addResource(ResType type, const std::string& bytes) { add(type, bytes); }

std::optional<std::string> Callbacks::resource(ResType type, int16 index) const {
  const auto found = find(type, index);
  if (found == callbackState().resources.end()) return std::nullopt;
  return std::string(handles().bytes(found->handle, "Callbacks.resource"));
}

}  // namespace simulator
