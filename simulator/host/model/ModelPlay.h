// Events that change the host's model.
#pragma once

#include "simulator/host/model/Model.h"
#include "simulator/host/model/TypeIds.h"
#include "simulator/host/model/Values.h"

namespace simulator {

/// Plays `event` with its parameters: 'setd' of the current brush, 'slct' of a tool, 'Ply ' of an
/// action. The result holds the message that the event left, if any. Throws CallError, and has
/// changed nothing then: errMissingParameter and kWrongDataType for the parameters,
/// kCommandNotAvailable where the event cannot be played now, or at all.
ContainerPtr playEvent(Model& model, DescriptorEventID event, const Container& parameters,
                       TypeIds& ids);

}  // namespace simulator
