#include "simulator/host/suites/Suites.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace simulator {

namespace {

constexpr OfferedSuite kOffered[] = {
    {SuiteId::descriptor, kPSActionDescriptorSuite, kPSActionDescriptorSuiteVersion,
     &descriptorSuite},
    {SuiteId::control, kPSActionControlSuite, kPSActionControlSuiteVersion, &controlSuite},
    {SuiteId::reference, kPSActionReferenceSuite, kPSActionReferenceSuiteVersion, &referenceSuite},
    {SuiteId::list, kPSActionListSuite, kPSActionListSuiteVersion, &listSuite},
    {SuiteId::handle, kPSHandleSuite, kPSHandleSuiteVersion2, &handleSuite},
    {SuiteId::string, kASZStringSuite, kASZStringSuiteVersion1, &stringSuite},
    {SuiteId::property, kPSPropertySuite, kPSPropertySuiteVersion, &propertySuite},
    {SuiteId::alias, kPSAliasSuite, kPSAliasSuiteVersion, &aliasSuite},
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

}  // namespace simulator
