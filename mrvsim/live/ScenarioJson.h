// Writes scenarios: the set-up and single steps as the JSON that `ScenarioFile` reads.
#pragma once

#include <string>

#include "simulator/base/Json.h"
#include "simulator/scenario/Scenario.h"

namespace simulator::live {

/// The members of a scenario but for its steps. Every member is written, so the text does not
/// depend on the defaults. Names of action files become absolute. [any-thread]
Json setupJson(const Scenario& scenario);

/// One step with its time. [any-thread]
Json stepJson(const Step& step);

/// The name of what a step does, such as "axes". [any-thread]
std::string kindOf(const Json& step);

}  // namespace simulator::live
