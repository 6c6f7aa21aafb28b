// Which axis of a joystick moves which axis of the cap, and the file that keeps it.
#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "mrvsim/live/Hand.h"

namespace simulator::live {

/// What moves one axis of the cap.
struct AxisSource {
  int axis = -1;  ///< of the joystick, from 0; -1: none
  bool isInverted = false;
  bool operator==(const AxisSource&) const = default;
};

struct AxisMap {
  static constexpr double kMostDeadZone = 0.9;

  std::array<AxisSource, kAxes> sources;
  double deadZone = 0.08;  ///< the share of the way in which an axis counts as at rest, 0 to 0.9

  /// The cap's deflection for the joystick's axes, each from -1 to 1.
  Deflection apply(const std::vector<double>& axes) const;

  bool operator==(const AxisMap&) const = default;
};

/// A first guess: six axes are those of a cap, in their order; of the two sticks of a gamepad the
/// left one slides, and the right one pushes and twists.
AxisMap guessedMap(std::size_t axes, bool isGamepad);

/// The maps that the user has made, by the joysticks' identifiers.
class AxisMaps {
 public:
  /// The map of the joystick; nullopt if none was saved.
  std::optional<AxisMap> find(const std::string& joystick) const;
  void set(const std::string& joystick, const AxisMap& map) { maps_[joystick] = map; }

  /// The text of the file, and back. Throws `std::runtime_error` with one line that names `file` if
  /// the text is not what `text` writes.
  std::string text() const;
  static AxisMaps parse(const std::string& text, const std::string& file);

  /// Reads the file; no maps if there is none. Throws `std::runtime_error` with one line.
  static AxisMaps load(const std::filesystem::path& file);

  /// Writes the file and makes its folder. Throws `std::runtime_error` with one line.
  void save(const std::filesystem::path& file) const;

 private:
  std::map<std::string, AxisMap> maps_;
};

/// $XDG_CONFIG_HOME/mrvphotoshop/devices.json, or the same in ~/.config; empty if neither variable
/// is set.
std::filesystem::path axisMapsFile();

}  // namespace simulator::live
