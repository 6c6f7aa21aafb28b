// Scenarios of random steps, for tests of what holds of every scenario.
#pragma once

#include <string>
#include <vector>

#include "simulator/base/Json.h"

namespace testing_support {

struct RandomScenario {
  simulator::Json host = simulator::Json::object();
  std::vector<simulator::Json> steps;  ///< without their times
};

/// The scenario of a seed: "Startup", and then motion, clicks, windows that close, tools, faults,
/// restarts and what else may happen to a plug-in.
RandomScenario randomScenario(unsigned seed);

/// The text of a scenario in which each step is a millisecond after the one before, so that the
/// time of a log's line names its step.
std::string textOf(const RandomScenario& scenario);

}  // namespace testing_support
