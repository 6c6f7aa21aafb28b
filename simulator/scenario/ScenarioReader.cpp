#include "simulator/scenario/ScenarioReader.h"

#include <MoravinClient/MoravinClient.h>
#include <fmt/format.h>

#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <string_view>

#include "simulator/base/Log.h"
#include "simulator/scenario/JsonFile.h"
#include "simulator/scenario/Procedures.h"

namespace simulator {

namespace {

/// A value with its place in the document, as a JSON pointer.
class Field {
 public:
  Field(const Json& value, std::string place) : value_(value), place_(std::move(place)) {}

  [[noreturn]] void fail(const std::string& reason) const {
    throw BadScenario(fmt::format("{}: {}", place_.empty() ? "/" : place_, reason));
  }

  bool isNull() const { return value_.is_null(); }
  bool isObject() const { return value_.is_object(); }

  /// Calls `read` for each member; if it returns false, the member is reported as unknown.
  void eachMember(const std::function<bool(const std::string&, const Field&)>& read) const {
    if (!value_.is_object()) fail("must be an object");
    for (const auto& [name, member] : value_.items()) {
      const Field field(member, place_ + "/" + name);
      if (!read(name, field)) field.fail("unknown field");
    }
  }

  std::vector<Field> elements() const {
    if (!value_.is_array()) fail("must be a list");
    std::vector<Field> fields;
    for (std::size_t i = 0; i < value_.size(); ++i) {
      fields.emplace_back(value_[i], fmt::format("{}/{}", place_, i));
    }
    return fields;
  }

  std::vector<Field> elements(std::size_t count, const char* whatTheyAre) const {
    if (!value_.is_array() || value_.size() != count) fail(fmt::format("must be {}", whatTheyAre));
    return elements();
  }

  std::string text() const {
    if (!value_.is_string()) fail("must be a text");
    return value_.get<std::string>();
  }

  bool boolean() const {
    if (!value_.is_boolean()) fail("must be true or false");
    return value_.get<bool>();
  }

  double number(double least = std::numeric_limits<double>::lowest()) const {
    if (!value_.is_number()) fail("must be a number");
    const double number = value_.get<double>();
    if (!std::isfinite(number) || number < least) fail("is out of range");
    return number;
  }

  std::int64_t integer(std::int64_t least, std::int64_t most) const {
    const double asDouble = number();
    if (std::trunc(asDouble) != asDouble) fail("must be a whole number");
    const bool inRange =
        static_cast<double>(least) <= asDouble && asDouble <= static_cast<double>(most);
    if (!inRange) fail(fmt::format("must be from {} to {}", least, most));
    return value_.is_number_float() ? static_cast<std::int64_t>(asDouble)
                                    : value_.get<std::int64_t>();
  }

 private:
  const Json& value_;
  std::string place_;
};

constexpr std::int64_t kLeast32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kMostSigned32 = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t kMost32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::int64_t kMost16 = std::numeric_limits<std::uint16_t>::max();
/// The last time whose device time stamp, in nanoseconds, fits into 64 bits.
constexpr std::int64_t kLastMillisecond = std::numeric_limits<std::int64_t>::max() / 1000000;

CGPoint readPoint(const Field& field) {
  const auto numbers = field.elements(2, "[x, y]");
  return {numbers[0].number(), numbers[1].number()};
}

CGRect readRect(const Field& field, double leastSize = std::numeric_limits<double>::lowest()) {
  const auto numbers = field.elements(4, "[x, y, width, height]");
  return {{numbers[0].number(), numbers[1].number()},
          {numbers[2].number(leastSize), numbers[3].number(leastSize)}};
}

MainWindow readWindow(const Field& field) {
  if (field.isNull()) return std::nullopt;
  WindowSetup window;
  field.eachMember([&](const std::string& name, const Field& value) {
    if (name == "frame") {
      window.frame = readRect(value, 0.0);
    } else if (name == "content") {
      window.content = readRect(value, 0.0);
    } else {
      return false;
    }
    return true;
  });
  return window;
}

HostVersion readVersion(const Field& field) {
  if (field.isNull()) return std::nullopt;
  const auto numbers = field.elements(2, "[major, minor] or null");
  return std::pair(static_cast<int>(numbers[0].integer(0, kMostSigned32)),
                   static_cast<int>(numbers[1].integer(0, kMostSigned32)));
}

std::optional<double> readDiameter(const Field& field) {
  if (field.isNull()) return std::nullopt;
  return field.number(0.0);
}

std::optional<double> readDelay(const Field& field) {
  if (field.isNull()) return std::nullopt;
  return field.number(0.0);
}

std::optional<bool> readPreference(const Field& field) {
  if (field.isNull()) return std::nullopt;
  return field.boolean();
}

std::uint32_t readModifiers(const Field& field) {
  return static_cast<std::uint32_t>(field.integer(0, kMost32));
}

HostSetup readHost(const Field& field) {
  HostSetup host;
  const std::map<std::string, std::function<void(const Field&)>> readers = {
      {"version", [&](const Field& value) { host.version = readVersion(value); }},
      {"tool", [&](const Field& value) { host.tool = value.text(); }},
      {"brush", [&](const Field& value) { host.brush = readDiameter(value); }},
      {"zoomWithScrollWheel",
       [&](const Field& value) { host.zoomWithScrollWheel = readPreference(value); }},
      {"window", [&](const Field& value) { host.window = readWindow(value); }},
      {"screenHeight", [&](const Field& value) { host.screenHeight = value.number(0.0); }},
      {"redrawDelay", [&](const Field& value) { host.redrawDelay = readDelay(value); }},
  };
  field.eachMember([&](const std::string& name, const Field& value) {
    const auto reader = readers.find(name);
    if (reader == readers.end()) return false;
    reader->second(value);
    return true;
  });
  return host;
}

std::array<std::int16_t, 6> readAxes(const Field& field) {
  const auto numbers = field.elements(6, "six integers");
  std::array<std::int16_t, 6> axes = {};
  for (std::size_t i = 0; i < axes.size(); ++i) {
    axes[i] = static_cast<std::int16_t>(numbers[i].integer(-32768, 32767));
  }
  return axes;
}

std::uint16_t readWord(const Field& field) {
  return static_cast<std::uint16_t>(field.integer(0, kMost16));
}

/// Accepts signed and unsigned 32-bit numbers and keeps their bits.
std::uint32_t readValue(const Field& field) {
  return static_cast<std::uint32_t>(field.integer(kLeast32, kMost32));
}

std::uint32_t readCode(const Field& field) {
  const std::string text = field.text();
  if (text.size() != 4) field.fail("must be a text of four characters");
  return fourCharCode({text[0], text[1], text[2], text[3], '\0'});
}

DeviceMessage plainMessage() { return {.type = kMoravinMessageDeviceState, .client = {}}; }

StepAction readAxesStep(const Field& field) {
  DeviceMessage message = plainMessage();
  message.axes = readAxes(field);
  return MessageStep{message};
}

StepAction readButtonStep(const Field& field) {
  const auto numbers = field.elements(2, "[word, value]");
  DeviceMessage message = plainMessage();
  message.command = kMoravinCommandButtons;
  message.button = readWord(numbers[0]);
  message.value = readValue(numbers[1]);
  return MessageStep{message};
}

StepAction readCommandStep(const Field& field) {
  DeviceMessage message = plainMessage();
  message.command = kMoravinCommandApplication;
  message.value = readValue(field);
  return MessageStep{message};
}

StepAction readMessageStep(const Field& field) {
  DeviceMessage message = plainMessage();
  const std::map<std::string, std::function<void(const Field&)>> readers = {
      {"type", [&](const Field& value) { message.type = readCode(value); }},
      {"client", [&](const Field& value) { message.client = readWord(value); }},
      {"command", [&](const Field& value) { message.command = readWord(value); }},
      {"value", [&](const Field& value) { message.value = readValue(value); }},
      {"axes", [&](const Field& value) { message.axes = readAxes(value); }},
      {"button", [&](const Field& value) { message.button = readWord(value); }},
  };
  field.eachMember([&](const std::string& name, const Field& value) {
    const auto reader = readers.find(name);
    if (reader == readers.end()) return false;
    reader->second(value);
    return true;
  });
  return MessageStep{message};
}

StepAction readCallStep(const Field& field) {
  const auto texts = field.elements(2, "[caller, selector]");
  return CallStep{texts[0].text(), texts[1].text()};
}

StepAction readRefreshStep(const Field& field) {
  RefreshStep step;
  for (const Field& rect : field.elements()) step.rects.push_back(readRect(rect));
  return step;
}

StepAction readClickStep(const Field& field) {
  const std::string kind = field.text();
  if (kind == "down") return ClickStep{Click::kDown};
  if (kind == "up") return ClickStep{Click::kUp};
  if (kind == "moved") return ClickStep{Click::kMoved};
  if (kind == "dragged") return ClickStep{Click::kDragged};
  field.fail(R"(must be "down", "up", "moved" or "dragged")");
}

StepAction readFailStep(const Field& field) {
  FaultRule rule;
  bool hasError = false;
  field.eachMember([&](const std::string& name, const Field& value) {
    if (name == "procedure") {
      rule.procedure = value.text();
      if (!isProcedure(rule.procedure)) value.fail("unknown procedure");
    } else if (name == "error") {
      rule.error = static_cast<std::int32_t>(value.integer(kLeast32, kMost32));
      hasError = true;
    } else if (name == "after") {
      rule.after = static_cast<std::uint64_t>(value.integer(0, kLastMillisecond));
    } else if (name == "times") {
      rule.times = static_cast<std::uint64_t>(value.integer(0, kLastMillisecond));
    } else {
      return false;
    }
    return true;
  });
  if (rule.procedure.empty() || !hasError) field.fail("needs a procedure and an error");
  return FailStep{rule};
}

StepAction readCloseWindowStep(const Field& field) {
  if (!field.boolean()) field.fail("must be true; a window step opens a window");
  return CloseWindowStep{};
}

using ActionReader = std::function<StepAction(const Field&)>;

const std::map<std::string, ActionReader>& actionReaders() {
  static const std::map<std::string, ActionReader> readers = {
      {"call", readCallStep},
      {"axes", readAxesStep},
      {"button", readButtonStep},
      {"command", readCommandStep},
      {"message", readMessageStep},
      {"active", [](const Field& f) -> StepAction { return ActiveStep{f.boolean()}; }},
      {"windowPending",
       [](const Field& f) -> StepAction { return WindowPendingStep{f.boolean()}; }},
      {"toolbarPending",
       [](const Field& f) -> StepAction { return ToolbarPendingStep{f.boolean()}; }},
      {"refresh", readRefreshStep},
      {"mouse", [](const Field& f) -> StepAction { return MouseStep{readPoint(f)}; }},
      {"click", readClickStep},
      {"modifiers", [](const Field& f) -> StepAction { return ModifiersStep{readModifiers(f)}; }},
      {"tool", [](const Field& f) -> StepAction { return ToolStep{f.text()}; }},
      {"brush", [](const Field& f) -> StepAction { return BrushStep{readDiameter(f)}; }},
      {"window", [](const Field& f) -> StepAction { return WindowStep{readWindow(f)}; }},
      {"closeWindow", readCloseWindowStep},
      {"layout", [](const Field& f) -> StepAction { return LayoutStep{f.text()}; }},
      {"fail", readFailStep},
  };
  return readers;
}

Step readStep(const Field& field, std::int64_t before) {
  std::optional<StepAction> action;
  std::int64_t at = before;
  field.eachMember([&](const std::string& name, const Field& value) {
    if (name == "at") {
      at = value.integer(0, kLastMillisecond);
      if (at < before) value.fail("must not be less than that of the step before");
      return true;
    }
    const auto reader = actionReaders().find(name);
    if (reader == actionReaders().end()) return false;
    if (action) value.fail("a step does one thing only");
    action = reader->second(value);
    return true;
  });
  if (!action) field.fail("a step must do something");
  return {at, *action};
}

std::vector<Step> readSteps(const Field& field) {
  std::vector<Step> steps;
  for (const Field& step : field.elements()) {
    steps.push_back(readStep(step, steps.empty() ? 0 : steps.back().at));
  }
  return steps;
}

Scenario readDocument(const Field& document) {
  Scenario scenario;
  const std::map<std::string, std::function<void(const Field&)>> readers = {
      {"host", [&](const Field& value) { scenario.host = readHost(value); }},
      {"layout", [&](const Field& value) { scenario.layout = value.text(); }},
      {"mouse", [&](const Field& value) { scenario.mouse = readPoint(value); }},
      {"modifiers", [&](const Field& value) { scenario.modifiers = readModifiers(value); }},
      {"framework", [&](const Field& value) { scenario.framework = value.boolean(); }},
      {"steps", [&](const Field& value) { scenario.steps = readSteps(value); }},
  };
  document.eachMember([&](const std::string& name, const Field& value) {
    const auto reader = readers.find(name);
    if (reader == readers.end()) return false;
    reader->second(value);
    return true;
  });
  return scenario;
}

}  // namespace

Scenario parseScenario(const std::string& text, const std::string& name) {
  try {
    return readDocument(Field(parseJson(text, name), ""));
  } catch (const BadJsonFile& error) {
    throw BadScenario(error.what());
  } catch (const BadScenario& error) {
    throw BadScenario(onOneLine(fmt::format("{}: {}", name, error.what())));
  }
}

Scenario readScenario(const std::string& file) {
  try {
    return parseScenario(readTextFile(file), file);
  } catch (const BadJsonFile& error) {
    throw BadScenario(error.what());
  }
}

}  // namespace simulator
