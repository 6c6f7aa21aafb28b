#include "mrvsim/live/Devices.h"

#include <algorithm>
#include <array>

namespace simulator::live {

namespace {

constexpr double kFullAxis = 32767;

std::string identifierOf(SDL_Joystick* joystick) {
  std::array<char, 33> text{};
  SDL_JoystickGetGUIDString(SDL_JoystickGetGUID(joystick), text.data(), text.size());
  return text.data();
}

std::vector<double> axesOf(SDL_Joystick* joystick, std::size_t count) {
  std::vector<double> axes(count);
  for (std::size_t i = 0; i < count; ++i) {
    axes[i] = SDL_JoystickGetAxis(joystick, static_cast<int>(i)) / kFullAxis;
  }
  return axes;
}

}  // namespace

bool Devices::take(const SDL_Event& event) {
  switch (event.type) {
    case SDL_JOYDEVICEADDED:
      add(event.jdevice.which);
      return true;
    case SDL_JOYDEVICEREMOVED:
      remove(event.jdevice.which);
      return true;
    case SDL_JOYAXISMOTION:
      return true;
    default:
      return false;
  }
}

void Devices::add(int index) {
  Handle handle(SDL_JoystickOpen(index), SDL_JoystickClose);
  if (!handle) return;
  Joystick joystick;
  joystick.number = SDL_JoystickInstanceID(handle.get());
  joystick.identifier = identifierOf(handle.get());
  const char* const name = SDL_JoystickName(handle.get());
  joystick.name = name == nullptr ? "a device without a name" : name;
  joystick.axes = static_cast<std::size_t>(std::max(SDL_JoystickNumAxes(handle.get()), 0));
  const bool isGamepad = SDL_IsGameController(index) == SDL_TRUE;
  const AxisMap guessed = guessedMap(joystick.axes, isGamepad);
  joystick.map = maps_.find(joystick.identifier).value_or(guessed);
  joysticks_.push_back(std::move(joystick));
  handles_.push_back(std::move(handle));
}

void Devices::remove(SDL_JoystickID number) {
  const auto gone =
      std::find_if(joysticks_.begin(), joysticks_.end(),
                   [&](const Joystick& joystick) { return joystick.number == number; });
  if (gone == joysticks_.end()) return;
  handles_.erase(handles_.begin() + (gone - joysticks_.begin()));
  joysticks_.erase(gone);
}

Deflection Devices::deflection() const {
  Deflection sum = {};
  for (std::size_t i = 0; i < joysticks_.size(); ++i) {
    const Joystick& joystick = joysticks_[i];
    const Deflection one = joystick.map.apply(axesOf(handles_[i].get(), joystick.axes));
    for (std::size_t axis = 0; axis < kAxes; ++axis) sum[axis] += one[axis];
  }
  return sum;
}

void Devices::setMap(std::size_t index, const AxisMap& map) {
  const std::string identifier = joysticks_[index].identifier;
  maps_.set(identifier, map);
  for (Joystick& joystick : joysticks_) {
    if (joystick.identifier == identifier) joystick.map = map;
  }
}

}  // namespace simulator::live
