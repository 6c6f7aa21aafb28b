// Reads scenarios and reports what is wrong with invalid ones.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "simulator/scenario/InputFile.h"
#include "simulator/scenario/JsonStream.h"
#include "simulator/scenario/Scenario.h"

namespace simulator {

/// Thrown if a scenario cannot be played; `what` is one line: the file, the line and column, the
/// place in the document, the reason and what is allowed.
class BadScenario : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// Where a step stands and what kind of step it is, such as "axes".
struct StepPlace {
  std::uint64_t index = 0;
  Position position;
  std::string kind;
};

/// A scenario that was read once and found good. Its steps are read again each time they are asked
/// for, so a scenario of any length takes little memory.
class ScenarioFile {
 public:
  /// Reads all of it; "-" is standard input. Throws `BadInput` if the file cannot be read, and
  /// `BadScenario` if it is not JSON or holds an unknown field or an invalid value.
  explicit ScenarioFile(const std::string& file) : ScenarioFile(InputFile(file)) {}
  explicit ScenarioFile(InputFile input);

  /// The name as messages show it.
  const std::string& name() const { return input_.name(); }

  /// Everything but the steps.
  const Scenario& setup() const { return setup_; }

  /// A line each about names that are allowed but not known, in the document's order and each once.
  const std::vector<std::string>& notes() const { return notes_; }

  std::uint64_t steps() const { return steps_; }

  /// Reads the steps and passes them on in turn. Throws what the constructor throws, should the
  /// file have changed, and what `take` throws.
  void eachStep(const std::function<void(const Step&, const StepPlace&)>& take) const;

 private:
  void noteUnknownNames();

  InputFile input_;
  Scenario setup_;
  std::uint64_t steps_ = 0;
  std::vector<std::string> notes_;
};

/// Reads a short scenario with its steps from a text; `name` stands for the file in errors. Throws
/// `BadScenario`.
Scenario parseScenario(const std::string& text, const std::string& name);

/// The names of all kinds of steps, sorted.
std::vector<std::string> stepNames();

}  // namespace simulator
