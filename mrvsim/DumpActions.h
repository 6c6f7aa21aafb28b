// The part of `mrvsim dump` that concerns action files.
#pragma once

#include <string>
#include <vector>

#include "actionfiles/ByteSource.h"
#include "mrvsim/ActionOutline.h"
#include "mrvsim/Generation.h"
#include "mrvsim/StepChoice.h"

namespace simulator {

/// Which steps of an action are chosen, and whether the action itself is: with all of its steps, or
/// with some.
struct ChosenAction {
  bool isChosen = false;
  std::vector<bool> steps = {};
};

/// For each action of a file.
using ChosenSteps = std::vector<ChosenAction>;

/// Throws std::runtime_error, which names the option and what is allowed, if there is no such set,
/// action or step. `file` is named in the error.
ChosenSteps chosenSteps(const StepChoice& choice, const SetOutline& set, const std::string& file);

/// In the process of the generator: reads an action file and appends the source text of each chosen
/// step, with a comment before it that names set, action and step. One step is in memory at a time.
/// Throws actionfiles::ActionFileError.
void dumpActions(actionfiles::ByteSource& source, const ChosenSteps& steps,
                 const GeneratorSide& generator);

/// The same in the ready form: one source file of the chosen actions.
void dumpReadyActions(actionfiles::ByteSource& source, const ChosenSteps& steps,
                      const GeneratorSide& generator);

}  // namespace simulator
