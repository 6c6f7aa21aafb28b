// Properties of the application.
#include "simulator/base/Log.h"
#include "simulator/host/model/HostCall.h"
#include "simulator/host/suites/Suites.h"

namespace simulator {

namespace {

std::intptr_t simpleValue(PIType signature, PIType key) {
  if (signature != kPhotoshopSignature || key != propAppIsModal) {
    throw CallError{errPlugInPropertyUndefined};
  }
  return hostState().model.modal;
}

void logProperty(PIType signature, PIType key, int32 index, OSErr result) {
  if (!theLog().enabled()) return;
  theLog().write("property", {{"signature", idText(signature)},
                              {"key", idText(key)},
                              {"index", index},
                              {"result", result}});
}

// No property here has a complex value, so that `complexProperty` is never written.
OSErr getProperty(PIType signature, PIType key, int32 index, std::intptr_t* simpleProperty,
                  Handle*) {
  const OSErr result = hostCall<OSErr>(SuiteId::property, "Property.GetSimple", [&] {
    const std::intptr_t value = simpleValue(signature, key);
    if (simpleProperty) *simpleProperty = value;
  });
  logProperty(signature, key, index, result);
  return result;
}

OSErr setProperty(PIType, PIType, int32, std::intptr_t, Handle) {
  return hostCall<OSErr>(SuiteId::property, "Property.SetSimple",
                         [] { throw CallError{errPlugInPropertyUndefined}; });
}

}  // namespace

const PropertyProcs propertySuite = {
    .propertyProcsVersion = kCurrentPropertyProcsVersion,
    .numPropertyProcs = kCurrentPropertyProcsCount,
    .getPropertyProc = getProperty,
    .setPropertyProc = setProperty,
};

}  // namespace simulator
