// Properties of the host and its documents, as set through Callbacks or by plug-ins.
#include "simulator/host/callbacks/CallbackState.h"
#include "simulator/macos/MemoryHandles.h"

namespace simulator {

namespace {

OSErr getProperty(PIType signature, PIType key, int32 index, std::intptr_t* simple,
                  Handle* complex) {
  constexpr const char* procedure = "Property.getPropertyProc";
  return callbackCall(procedure, [&] {
    const auto& properties = callbackState().properties;
    const auto found = properties.find({signature, key, index});
    if (found == properties.end()) throw CallError{errPlugInPropertyUndefined};
    const PropertyBody& property = found->second;
    if (simple != nullptr) *simple = property.simple;
    if (complex == nullptr) return;
    *complex = property.complex ? theMemoryHandles().make(*property.complex, procedure) : nullptr;
  });
}

OSErr setProperty(PIType signature, PIType key, int32 index, std::intptr_t simple, Handle complex) {
  constexpr const char* procedure = "Property.setPropertyProc";
  return callbackCall(procedure, [&] {
    PropertyBody property = {simple};
    if (complex != nullptr) {
      property.complex = std::string(theMemoryHandles().bytes(complex, procedure));
    }
    callbackState().properties[{signature, key, index}] = std::move(property);
  });
}

constexpr PropertyProcs kPropertyProcs = {
    .propertyProcsVersion = 0,
    .numPropertyProcs = 0,
    .getPropertyProc = getProperty,
    .setPropertyProc = setProperty,
};

}  // namespace

PropertyProcs propertyProcs(int16 version, int16 count) {
  return cutRecord(kPropertyProcs, version, count);
}

void Callbacks::setProperty(PIType signature, PIType key, int32 index, std::intptr_t simple) {
  callbackState().properties[{signature, key, index}] = {simple};
}

void Callbacks::setProperty(PIType signature, PIType key, int32 index, const std::string& complex) {
  callbackState().properties[{signature, key, index}] = {0, complex};
}

}  // namespace simulator
