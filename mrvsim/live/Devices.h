// The joysticks, gamepads and six-axis devices that are connected. [main-thread]
#pragma once

#include <SDL.h>

#include <memory>
#include <string>
#include <vector>

#include "mrvsim/live/AxisMap.h"

namespace simulator::live {

struct Joystick {
  SDL_JoystickID number = -1;
  std::string identifier;  ///< the same for every joystick of a model
  std::string name;
  std::size_t axes = 0;
  AxisMap map;
};

/// Follows what is plugged in and out. REQUIRES: SDL's joysticks are initialised as long as it
/// lives.
class Devices {
 public:
  explicit Devices(AxisMaps maps) : maps_(std::move(maps)) {}

  /// Takes an event of the system. Returns whether a cap has moved, or a device came or went.
  bool take(const SDL_Event& event);

  /// The deflection of the cap: what all devices report together.
  Deflection deflection() const;

  const std::vector<Joystick>& joysticks() const { return joysticks_; }

  /// Gives all joysticks of the model of the joystick at this place another map, which `maps` then
  /// has.
  void setMap(std::size_t index, const AxisMap& map);

  const AxisMaps& maps() const { return maps_; }

 private:
  using Handle = std::unique_ptr<SDL_Joystick, void (*)(SDL_Joystick*)>;

  void add(int index);
  void remove(SDL_JoystickID number);

  AxisMaps maps_;
  std::vector<Joystick> joysticks_;
  std::vector<Handle> handles_;  ///< of the joysticks, in the same order
};

}  // namespace simulator::live
