#include "mac/Playback.h"

#include <fmt/format.h>

#include <algorithm>

#include "simulator/scenario/ScenarioReader.h"

namespace mrvmac {

namespace {

constexpr std::uint64_t kNanosecondsInMillisecond = 1000000;

bool isPlayable(const simulator::StepAction& action) {
  return std::holds_alternative<simulator::CallStep>(action) ||
         std::holds_alternative<simulator::MessageStep>(action);
}

}  // namespace

void requirePlayable(const simulator::Scenario& scenario, const std::string& name) {
  const auto& steps = scenario.steps;
  const auto wrong = std::find_if_not(steps.begin(), steps.end(),
                                      [](const auto& step) { return isPlayable(step.action); });
  if (wrong == steps.end()) return;
  throw simulator::BadScenario(
      fmt::format("{}: /steps/{}: only calls and device messages can be played on a real Mac", name,
                  wrong - steps.begin()));
}

MoravinDeviceState recordOf(const simulator::DeviceMessage& message, std::int64_t at,
                            std::uint16_t client) {
  MoravinDeviceState state = {};
  state.client = message.client.value_or(client);
  state.command = message.command;
  state.value = message.value;
  state.time = static_cast<std::uint64_t>(at) * kNanosecondsInMillisecond;
  std::copy(message.axes.begin(), message.axes.end(), state.axis);
  state.button = message.button;
  return state;
}

}  // namespace mrvmac
