// Events that change the host's model.
#pragma once

#include "simulator/host/model/Model.h"
#include "simulator/host/model/TypeIds.h"
#include "simulator/host/model/Values.h"

namespace simulator {

/// Plays `event` with its parameters: 'setd' of the current brush, 'slct' of a tool, 'Ply ' of an
/// action. Returns a descriptor with the action's message, if it has one. On failure nothing has
/// changed. Throws CallError: errMissingParameter or kWrongDataType for missing parameters or wrong
/// types, paramErr for a value out of range, kNoSuchObject for an unknown action, the action's own
/// error, and kCommandNotAvailable for other events and if the event cannot be played now.
ContainerPtr playEvent(Model& model, DescriptorEventID event, const Container& parameters,
                       TypeIds& ids);

}  // namespace simulator
