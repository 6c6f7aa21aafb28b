// Records as the device framework passes them to its clients.
#pragma once

#include <MoravinClient/MoravinClient.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace testing_support {

inline MoravinDeviceState deviceRecord(std::uint16_t client, std::uint16_t command) {
  MoravinDeviceState state = {};
  state.client = client;
  state.command = command;
  return state;
}

/// `axes` are in the device's order: three translations, three rotations.
inline MoravinDeviceState axesRecord(std::uint16_t client,
                                     const std::array<std::int16_t, 6>& axes) {
  MoravinDeviceState state = deviceRecord(client, kMoravinCommandAxes);
  std::copy(axes.begin(), axes.end(), state.axis);
  return state;
}

inline MoravinDeviceState buttonRecord(std::uint16_t client, std::uint16_t button,
                                       std::uint32_t value) {
  MoravinDeviceState state = deviceRecord(client, kMoravinCommandButtons);
  state.button = button;
  state.value = value;
  return state;
}

inline MoravinDeviceState commandRecord(std::uint16_t client, std::uint32_t value) {
  MoravinDeviceState state = deviceRecord(client, kMoravinCommandApplication);
  state.value = value;
  return state;
}

}  // namespace testing_support
