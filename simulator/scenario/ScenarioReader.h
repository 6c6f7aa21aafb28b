// Reads scenarios, and tells what is wrong with those that cannot be played.
#pragma once

#include <stdexcept>
#include <string>

#include "simulator/scenario/Scenario.h"

namespace simulator {

/// A scenario that cannot be played; `what` is one line: the file, the place in it, the reason.
class BadScenario : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// Reads the file. Throws `BadScenario` where it is missing, is no JSON, or holds an unknown field
/// or a value that does not belong there.
Scenario readScenario(const std::string& file);

/// The same of a text; `name` stands for the file in errors.
Scenario parseScenario(const std::string& text, const std::string& name);

}  // namespace simulator
