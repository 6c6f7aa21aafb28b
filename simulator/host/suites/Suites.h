// The suites that the simulated host offers.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/host/ASZStringSuite.h"
#include "platform/host/PIActions.h"
#include "platform/host/PIAliasSuite.h"
#include "platform/host/PIHandleSuite.h"
#include "platform/host/PIProperties.h"
#include "platform/host/SPBasic.h"
#include "simulator/host/model/HostState.h"
#include "simulator/host/suites/Procedure.h"

namespace simulator {

extern HostSuite<SPBasicSuite> basicSuite;
extern const HostSuite<PSActionDescriptorProcs> descriptorSuite;
extern const HostSuite<PSActionListProcs> listSuite;
extern const HostSuite<PSActionReferenceProcs> referenceSuite;
extern const HostSuite<PSActionControlProcs> controlSuite;
extern const HostSuite<PSHandleSuite2> handleSuite;
extern const HostSuite<ASZStringSuite> stringSuite;
extern const HostSuite<PropertyProcs> propertySuite;
extern const HostSuite<PSAliasSuite> aliasSuite;

/// What the basic suite finds by name: a suite's only version and its record of procedures.
struct OfferedSuite {
  SuiteId id;
  const char* name;
  std::int32_t version;
  const void* record;
};

/// The suite with this name and version; null if the host does not offer it. `name` may be null.
const OfferedSuite* findSuite(const char* name, std::int32_t version);

/// The names of the procedures of all suites and of the basic suite ("ActionList.PutInteger").
/// SPBasicSuite::Undefined is not among them.
std::vector<std::string_view> suiteProcedureNames();

}  // namespace simulator
