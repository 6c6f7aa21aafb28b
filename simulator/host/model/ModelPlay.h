// Events that change the host's model.
#pragma once

#include <cstddef>
#include <functional>

#include "simulator/host/model/Model.h"
#include "simulator/host/model/TypeIds.h"
#include "simulator/host/model/Values.h"

namespace simulator {

/// A step of an action that was played; `step` counts from 0.
struct PlayedStep {
  const ActionSet& set;
  const Action& action;
  std::size_t step;
  OSErr result;
};

using StepObserver = std::function<void(const PlayedStep&)>;

/// Plays `event` with its parameters: 'setd' of the current brush, 'slct' of a tool, 'Ply ' of an
/// action; the string IDs "set", "select" and "play" name the same events. Returns a descriptor
/// with the action's message, if it has one.
///
/// An action plays its enabled steps in order; `observe` gets each after it was played. A step that
/// gets kCommandNotAvailable, which most recorded events do as this model does not know them, does
/// not end the action. Any other error of a step does, and is the action's error. An action that
/// plays itself, directly or through others, gets kCommandNotAvailable for that step, and so does
/// the 65th of actions that each play the next.
///
/// Throws CallError, and then nothing has changed except by steps that were played:
/// errMissingParameter or kWrongDataType for missing parameters or wrong types, paramErr for a
/// value out of range, kNoSuchObject for an unknown action, the action's own error, and
/// kCommandNotAvailable for other events and if the event cannot be played now.
ContainerPtr playEvent(Model& model, DescriptorEventID event, const Container& parameters,
                       TypeIds& ids, const StepObserver& observe = {});

}  // namespace simulator
