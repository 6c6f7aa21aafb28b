// Reads scenarios and reports what is wrong with invalid ones.
#pragma once

#include <stdexcept>
#include <string>

#include "simulator/scenario/Scenario.h"

namespace simulator {

/// Thrown if a scenario cannot be played; `what` is one line: the file, the place in it, the
/// reason.
class BadScenario : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// Reads the file. Throws `BadScenario` if it cannot be read, is not JSON, or holds an unknown
/// field or an invalid value.
Scenario readScenario(const std::string& file);

/// The same for a text; `name` stands for the file in errors.
Scenario parseScenario(const std::string& text, const std::string& name);

}  // namespace simulator
