// What a reference names in the host's model, and the properties that it has.
#pragma once

#include "simulator/host/model/Model.h"
#include "simulator/host/model/TypeIds.h"
#include "simulator/host/model/Values.h"

namespace simulator {

/// The answer to a get: the properties of what `reference` names, or the ones that its property
/// form asks for. Throws CallError: kNoSuchObject where nothing is named so, errMissingParameter
/// where the object has no such property.
ContainerPtr answerGet(const Model& model, const Reference& reference, TypeIds& ids);

/// The action that a reference of an action and its set names. Throws CallError.
const Action& namedAction(const Model& model, const Reference& reference);

}  // namespace simulator
