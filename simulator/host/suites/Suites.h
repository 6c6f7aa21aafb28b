// The suites that the simulated host offers.
#pragma once

#include "platform/host/ASZStringSuite.h"
#include "platform/host/PIActions.h"
#include "platform/host/PIAliasSuite.h"
#include "platform/host/PIHandleSuite.h"
#include "platform/host/PIProperties.h"
#include "platform/host/SPBasic.h"
#include "simulator/host/model/HostState.h"

namespace simulator {

extern SPBasicSuite basicSuite;
extern const PSActionDescriptorProcs descriptorSuite;
extern const PSActionListProcs listSuite;
extern const PSActionReferenceProcs referenceSuite;
extern const PSActionControlProcs controlSuite;
extern const PSHandleSuite2 handleSuite;
extern const ASZStringSuite stringSuite;
extern const PropertyProcs propertySuite;
extern const PSAliasSuite aliasSuite;

/// What the basic suite finds: a name, the one version that there is, and the table.
struct OfferedSuite {
  SuiteId id;
  const char* name;
  std::int32_t version;
  const void* procedures;
};

/// The suite of this name and version, null where the host has none such.
const OfferedSuite* findSuite(const char* name, std::int32_t version);

}  // namespace simulator
