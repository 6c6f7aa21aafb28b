#include "simulator/host/suites/Suites.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace simulator {

namespace {

constexpr OfferedSuite kOffered[] = {
    {SuiteId::descriptor, kPSActionDescriptorSuite, kPSActionDescriptorSuiteVersion,
     &descriptorSuite.record},
    {SuiteId::control, kPSActionControlSuite, kPSActionControlSuiteVersion, &controlSuite.record},
    {SuiteId::reference, kPSActionReferenceSuite, kPSActionReferenceSuiteVersion,
     &referenceSuite.record},
    {SuiteId::list, kPSActionListSuite, kPSActionListSuiteVersion, &listSuite.record},
    {SuiteId::handle, kPSHandleSuite, kPSHandleSuiteVersion2, &handleSuite.record},
    {SuiteId::string, kASZStringSuite, kASZStringSuiteVersion1, &stringSuite.record},
    {SuiteId::property, kPSPropertySuite, kPSPropertySuiteVersion, &propertySuite.record},
    {SuiteId::alias, kPSAliasSuite, kPSAliasSuiteVersion, &aliasSuite.record},
};

}  // namespace

const OfferedSuite* findSuite(const char* name, std::int32_t version) {
  if (name == nullptr) return nullptr;
  const auto* found =
      std::find_if(std::begin(kOffered), std::end(kOffered), [&](const OfferedSuite& suite) {
        return suite.version == version && std::string_view(suite.name) == name;
      });
  return found == std::end(kOffered) ? nullptr : found;
}

std::vector<std::string_view> suiteProcedureNames() {
  std::vector<std::string_view> names;
  for (const auto& suite :
       {descriptorSuite.procedureNames, controlSuite.procedureNames, referenceSuite.procedureNames,
        listSuite.procedureNames, handleSuite.procedureNames, stringSuite.procedureNames,
        propertySuite.procedureNames, aliasSuite.procedureNames, basicSuite.procedureNames}) {
    names.insert(names.end(), suite.begin(), suite.end());
  }
  return names;
}

}  // namespace simulator
