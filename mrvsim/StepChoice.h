// Which steps of an action file to dump.
#pragma once

#include <optional>
#include <string>

namespace simulator {

/// The steps to dump: each member is a name, or a number from 1 if no name is that text; all if it
/// is not given. A name stands for everything that has it.
struct StepChoice {
  std::optional<std::string> set, action, step;

  bool isGiven() const { return set || action || step; }
};

}  // namespace simulator
