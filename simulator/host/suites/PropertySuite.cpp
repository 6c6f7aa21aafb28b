// Properties of the application.
#include "simulator/base/Log.h"
#include "simulator/host/model/HostCall.h"
#include "simulator/host/suites/Suites.h"

namespace simulator {

namespace property_suite {
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

// Never writes the complex value: no property has one.
OSErr getProperty(const char* procedure, PIType signature, PIType key, int32 index,
                  std::intptr_t* simpleProperty, Handle*) {
  const OSErr result = hostCall<OSErr>(SuiteId::property, procedure, [&] {
    const std::intptr_t value = simpleValue(signature, key);
    if (simpleProperty) *simpleProperty = value;
  });
  logProperty(signature, key, index, result);
  return result;
}

OSErr setProperty(const char* procedure, PIType, PIType, int32, std::intptr_t, Handle) {
  return hostCall<OSErr>(SuiteId::property, procedure,
                         [] { throw CallError{errPlugInPropertyUndefined}; });
}

constexpr auto kProcedures = std::to_array<Procedure<PropertyProcs>>({
    row<"Property.GetSimple", &PropertyProcs::getPropertyProc, getProperty>,
    row<"Property.SetSimple", &PropertyProcs::setPropertyProc, setProperty>,
});

}  // namespace
}  // namespace property_suite

constinit const HostSuite<PropertyProcs> propertySuite =
    suiteOf<property_suite::kProcedures>([](PropertyProcs& record) {
      record.propertyProcsVersion = kCurrentPropertyProcsVersion;
      record.numPropertyProcs = kCurrentPropertyProcsCount;
    });

}  // namespace simulator
