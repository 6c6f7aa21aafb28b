#include "mrvsim/live/AxisMap.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "simulator/base/Json.h"
#include "simulator/scenario/Wording.h"

namespace simulator::live {

namespace {

constexpr int kMostAxes = 64;

/// What an axis is worth after the dead zone: the rest of the way is stretched over the whole.
double beyond(double value, double deadZone) {
  const double size = std::min(std::abs(value), 1.0);
  return size <= deadZone ? 0.0 : std::copysign((size - deadZone) / (1 - deadZone), value);
}

Json sourceJson(const AxisSource& source) {
  if (source.axis < 0) return nullptr;
  return {{"axis", source.axis}, {"inverted", source.isInverted}};
}

struct BadMap {
  std::string reason;
};

void expect(bool good, const std::string& reason) {
  if (!good) throw BadMap{reason};
}

const Json& member(const Json& object, const std::string& place, const char* name) {
  expect(object.is_object() && object.contains(name),
         fmt::format("{}: lacks the field \"{}\"", place, name));
  return object[name];
}

AxisSource readSource(const Json& json, const std::string& place) {
  if (json.is_null()) return {};
  const Json& axis = member(json, place, "axis");
  const Json& inverted = member(json, place, "inverted");
  const bool inRange = axis.is_number_integer() && axis >= 0 && axis < kMostAxes;
  expect(inRange, fmt::format("{}/axis: must be from 0 to {}", place, kMostAxes - 1));
  expect(inverted.is_boolean(), place + "/inverted: must be true or false");
  return {axis, inverted};
}

AxisMap readMap(const Json& json, const std::string& place) {
  AxisMap map;
  const Json& sources = member(json, place, "axes");
  expect(sources.is_array() && sources.size() == kAxes, place + "/axes: must be a list of six");
  for (std::size_t i = 0; i < kAxes; ++i) {
    map.sources[i] = readSource(sources[i], fmt::format("{}/axes/{}", place, i));
  }
  const Json& deadZone = member(json, place, "deadZone");
  const bool inRange =
      deadZone.is_number() && deadZone >= 0.0 && deadZone <= AxisMap::kMostDeadZone;
  expect(inRange, fmt::format("{}/deadZone: must be from 0 to {}", place, AxisMap::kMostDeadZone));
  map.deadZone = deadZone;
  return map;
}

std::runtime_error fileError(const std::filesystem::path& file, const std::string& reason) {
  return std::runtime_error(printableFile(file.string()) + ": " + reason);
}

}  // namespace

Deflection AxisMap::apply(const std::vector<double>& axes) const {
  Deflection deflection = {};
  for (std::size_t i = 0; i < kAxes; ++i) {
    const auto source = static_cast<std::size_t>(sources[i].axis);
    if (sources[i].axis < 0 || source >= axes.size()) continue;
    deflection[i] = beyond(axes[source], deadZone) * (sources[i].isInverted ? -1 : 1);
  }
  return deflection;
}

AxisMap guessedMap(std::size_t axes, bool isGamepad) {
  AxisMap map;
  if (!isGamepad && axes >= kAxes) {
    for (std::size_t i = 0; i < kAxes; ++i) map.sources[i].axis = static_cast<int>(i);
    return map;
  }
  // A stick's second axis grows downward. The triggers come between the sticks or after them.
  const bool hasTwoSticks = axes >= 4;
  const int second = axes >= 6 ? 3 : 2;
  map.sources[kSideways] = {axes >= 1 ? 0 : -1, false};
  map.sources[hasTwoSticks ? kUpward : kPush] = {axes >= 2 ? 1 : -1, true};
  if (hasTwoSticks) {
    map.sources[kTwist] = {second, false};
    map.sources[kPush] = {second + 1, true};
  } else if (axes == 3) {
    map.sources[kTwist] = {2, false};
  }
  return map;
}

std::optional<AxisMap> AxisMaps::find(const std::string& joystick) const {
  const auto found = maps_.find(joystick);
  return found == maps_.end() ? std::nullopt : std::optional(found->second);
}

std::string AxisMaps::text() const {
  Json devices = Json::object();
  for (const auto& [joystick, map] : maps_) {
    Json axes = Json::array();
    for (const AxisSource& source : map.sources) axes.push_back(sourceJson(source));
    devices[joystick] = {{"axes", axes}, {"deadZone", map.deadZone}};
  }
  return Json{{"devices", devices}}.dump(2) + "\n";
}

AxisMaps AxisMaps::parse(const std::string& text, const std::string& file) {
  try {
    AxisMaps maps;
    const Json document = jsonOf(text);
    const Json& devices = member(document, "", "devices");
    expect(devices.is_object(), "/devices: must be an object");
    for (const auto& [joystick, map] : devices.items()) {
      maps.maps_[joystick] = readMap(map, "/devices/" + joystick);
    }
    return maps;
  } catch (const Json::parse_error&) {
    throw fileError(file, "is not JSON; remove it to begin with guessed axes");
  } catch (const BadMap& bad) {
    throw fileError(file, bad.reason + "; remove it to begin with guessed axes");
  }
}

AxisMaps AxisMaps::load(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return {};
  std::ostringstream text;
  text << stream.rdbuf();
  return parse(text.str(), file.string());
}

void AxisMaps::save(const std::filesystem::path& file) const {
  std::error_code error;
  std::filesystem::create_directories(file.parent_path(), error);
  std::ofstream stream(file, std::ios::binary);
  stream << text();
  if (!stream.flush()) {
    throw fileError(file, fmt::format("cannot be written: {}", std::strerror(errno)));
  }
}

std::filesystem::path axisMapsFile() {
  const char* const folder = std::getenv("XDG_CONFIG_HOME");
  const std::filesystem::path inFolder = "mrvphotoshop/devices.json";
  if (folder != nullptr && *folder != '\0') return folder / inFolder;
  const char* const home = std::getenv("HOME");
  if (home == nullptr || *home == '\0') return {};
  return std::filesystem::path(home) / ".config" / inFolder;
}

}  // namespace simulator::live
