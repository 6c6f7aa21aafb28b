// The part of `mrvsim dump` that concerns action files.
#pragma once

#include <string>
#include <vector>

#include "actionfiles/ByteSource.h"
#include "mrvsim/ActionOutline.h"
#include "mrvsim/Generation.h"
#include "mrvsim/StepChoice.h"

namespace simulator {

/// For each action, which of its steps are chosen.
using ChosenSteps = std::vector<std::vector<bool>>;

/// Throws std::runtime_error, which names the option and what is allowed, if there is no such set,
/// action or step. `file` is named in the error.
ChosenSteps chosenSteps(const StepChoice& choice, const SetOutline& set, const std::string& file);

/// In the process of the generator: reads an action file and appends the source text of each chosen
/// step, with a comment before it that names set, action and step. One step is in memory at a time.
/// Throws actionfiles::ActionFileError.
void dumpActions(actionfiles::ByteSource& source, const ChosenSteps& steps,
                 const GeneratorSide& generator);

}  // namespace simulator
