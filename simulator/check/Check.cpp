#include "simulator/check/Check.h"

namespace simulator {

namespace {

std::vector<Check> joined(std::vector<Check> first, const std::vector<Check>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
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
  static const std::vector<Check> checks = joined(fileChecks(), conductChecks());
  return checks;
}

}  // namespace simulator
