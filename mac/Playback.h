// Scenarios as far as they can be played on a real Mac.
#pragma once

#include <MoravinClient/MoravinClient.h>

#include <cstdint>

#include "simulator/scenario/Scenario.h"

namespace mrvmac {

/// Throws simulator::BadScenario if the scenario holds a step that only a simulated machine can
/// take: a real one's window, mouse and modifiers are not moved. `name` stands for the file in the
/// error. Calls of the plug-in and device messages can be played. [any-thread]
void requirePlayable(const simulator::Scenario& scenario, const std::string& name);

/// The record of a message that is sent at `at` milliseconds. `client`: the registered client,
/// which gets messages without a client of their own. [any-thread]
MoravinDeviceState recordOf(const simulator::DeviceMessage& message, std::int64_t at,
                            std::uint16_t client);

}  // namespace mrvmac
