// Resolves references in the host's model and reads the properties of what they name.
#pragma once

#include "simulator/host/model/Model.h"
#include "simulator/host/model/TypeIds.h"
#include "simulator/host/model/Values.h"

namespace simulator {

/// The answer to a get: all properties of the object that `reference` names, or only the one that
/// its property form asks for. Throws CallError: kNoSuchObject if the object does not exist,
/// errMissingParameter if it lacks the property.
ContainerPtr answerGet(const Model& model, Forms reference, TypeIds& ids);

struct ActionInSet {
  const ActionSet& set;
  const Action& action;
};

/// The action that a reference to an action in its set names. Throws CallError: kNoSuchObject if it
/// does not exist.
ActionInSet namedAction(const Model& model, Forms reference);

}  // namespace simulator
