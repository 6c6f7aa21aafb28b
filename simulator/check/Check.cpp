#include "simulator/check/Check.h"

#include <initializer_list>

namespace simulator {

namespace {

std::vector<Check> joined(std::initializer_list<std::vector<Check>> parts) {
  std::vector<Check> all;
  for (const std::vector<Check>& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

}  // namespace

std::string_view outcomeName(Outcome outcome) {
  switch (outcome) {
    case Outcome::kPassed:
      return "passed";
    case Outcome::kFailed:
      return "failed";
    default:
      return "not applicable";
  }
}

const std::vector<Check>& allChecks() {
  static const std::vector<Check> checks = joined({fileChecks(), bundleChecks(), conductChecks()});
  return checks;
}

}  // namespace simulator
