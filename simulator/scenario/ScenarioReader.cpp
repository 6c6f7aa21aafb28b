#include "simulator/scenario/ScenarioReader.h"

#include <MoravinClient/MoravinClient.h>
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <set>
#include <utility>

#include "actionfiles/ActionFileError.h"
#include "actionfiles/ActionFileReader.h"
#include "actionfiles/ByteSource.h"
#include "simulator/base/Log.h"
#include "simulator/host/json/JsonFields.h"
#include "simulator/scenario/JsonFile.h"
#include "simulator/scenario/Names.h"
#include "simulator/scenario/Procedures.h"
#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

/// A fault at a place in the document, given as a JSON pointer.
struct Fault {
  std::string place;
  std::string reason;
  bool atKey = false;  ///< the key is wrong and not the value
};

class Field;

/// The fields that an object may have.
using FieldReaders = std::map<std::string, std::function<void(const Field&)>>;

template <class Map>
std::vector<std::string> namesOf(const Map& map) {
  std::vector<std::string> names;
  for (const auto& [name, value] : map) names.push_back(name);
  return names;
}

/// A value with its place in the document.
class Field {
 public:
  Field(const Json& value, std::string place) : value_(value), place_(std::move(place)) {}

  [[noreturn]] void fail(const std::string& reason) const { throw Fault{place_, reason}; }

  /// Reports that the object which this field is in may not have it.
  [[noreturn]] void failAsUnknown(const std::vector<std::string>& allowed) const {
    const std::string name = place_.substr(place_.rfind('/') + 1);
    throw Fault{place_,
                fmt::format("unknown field{}; allowed: {}", guess(name, allowed), listed(allowed)),
                true};
  }

  bool isNull() const { return value_.is_null(); }
  bool isObject() const { return value_.is_object(); }

  /// Calls `read` for each member.
  void eachMember(const std::function<void(const std::string&, const Field&)>& read) const {
    if (!value_.is_object()) fail("must be an object");
    for (const auto& [name, member] : value_.items()) {
      read(name, Field(member, place_ + "/" + pointerStep(name)));
    }
  }

  /// Reads each member; one without a reader is reported as unknown.
  void readMembers(const FieldReaders& readers) const {
    eachMember([&](const std::string& name, const Field& value) {
      const auto reader = readers.find(name);
      if (reader == readers.end()) value.failAsUnknown(namesOf(readers));
      reader->second(value);
    });
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
    if (number < least) fail(fmt::format("is out of range: must be {:g} or more", least));
    return number;
  }

  std::int64_t integer(std::int64_t least, std::int64_t most) const {
    const std::string range = fmt::format("must be from {} to {}", least, most);
    if (!value_.is_number()) fail("must be a whole number, and " + range);
    const double asDouble = value_.get<double>();
    if (std::trunc(asDouble) != asDouble) fail("must be a whole number, and " + range);
    const bool inRange =
        static_cast<double>(least) <= asDouble && asDouble <= static_cast<double>(most);
    if (!inRange) fail(range);
    return value_.is_number_float() ? static_cast<std::int64_t>(asDouble)
                                    : value_.get<std::int64_t>();
  }

 private:
  const Json& value_;
  std::string place_;
};

constexpr std::size_t kMostNotes = 10;
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
  field.readMembers({
      {"frame", [&](const Field& value) { window.frame = readRect(value, 0.0); }},
      {"content", [&](const Field& value) { window.content = readRect(value, 0.0); }},
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

/// Reads an action file to its end, which shows whether it can be loaded.
void checkActionFile(const std::string& file) {
  actionfiles::FileSource source(file);
  actionfiles::ActionFileReader reader(source);
  while (reader.nextAction() != nullptr) {
    // Its steps are read with the next action.
  }
}

/// The action files, whose names are relative to the scenario's folder.
std::vector<std::string> readActionFiles(const Field& field, const std::filesystem::path& folder) {
  std::vector<std::string> files;
  for (const Field& name : field.elements()) {
    files.push_back((folder / name.text()).string());
    try {
      checkActionFile(files.back());
    } catch (const actionfiles::ActionFileError& error) {
      name.fail(error.what());
    }
  }
  return files;
}

HostSetup readHost(const Field& field, const std::filesystem::path& folder) {
  HostSetup host;
  const FieldReaders readers = {
      {"version", [&](const Field& value) { host.version = readVersion(value); }},
      {"tool", [&](const Field& value) { host.tool = value.text(); }},
      {"brush", [&](const Field& value) { host.brush = readDiameter(value); }},
      {"zoomWithScrollWheel",
       [&](const Field& value) { host.zoomWithScrollWheel = readPreference(value); }},
      {"window", [&](const Field& value) { host.window = readWindow(value); }},
      {"screenHeight", [&](const Field& value) { host.screenHeight = value.number(0.0); }},
      {"redrawDelay", [&](const Field& value) { host.redrawDelay = readDelay(value); }},
      {"actions", [&](const Field& value) { host.actions = readActionFiles(value, folder); }},
  };
  field.readMembers(readers);
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
  const auto code = codeOf(field.text());
  if (!code) field.fail("must be a text of four ASCII characters");
  return *code;
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
  const FieldReaders readers = {
      {"type", [&](const Field& value) { message.type = readCode(value); }},
      {"client", [&](const Field& value) { message.client = readWord(value); }},
      {"command", [&](const Field& value) { message.command = readWord(value); }},
      {"value", [&](const Field& value) { message.value = readValue(value); }},
      {"axes", [&](const Field& value) { message.axes = readAxes(value); }},
      {"button", [&](const Field& value) { message.button = readWord(value); }},
  };
  field.readMembers(readers);
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

std::string readProcedure(const Field& field) {
  const std::string name = field.text();
  if (isProcedure(name)) return name;
  field.fail(fmt::format("unknown procedure \"{}\"{}; \"mrvsim list procedures\" names all",
                         printable(name), guess(name, procedureNames())));
}

StepAction readFailStep(const Field& field) {
  FaultRule rule;
  bool hasError = false;
  const auto count = [](const Field& value) {
    return static_cast<std::uint64_t>(value.integer(0, kLastMillisecond));
  };
  field.readMembers({
      {"procedure", [&](const Field& value) { rule.procedure = readProcedure(value); }},
      {"error",
       [&](const Field& value) {
         rule.error = static_cast<std::int32_t>(value.integer(kLeast32, kMost32));
         hasError = true;
       }},
      {"after", [&](const Field& value) { rule.after = count(value); }},
      {"times", [&](const Field& value) { rule.times = count(value); }},
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
      {"redrawDelay", [](const Field& f) -> StepAction { return RedrawDelayStep{readDelay(f)}; }},
      {"zoomWithScrollWheel",
       [](const Field& f) -> StepAction { return PreferenceStep{f.boolean()}; }},
  };
  return readers;
}

/// What a step may consist of: the time, and one thing to do.
std::vector<std::string> fieldsOfSteps() {
  std::vector<std::string> names = namesOf(actionReaders());
  names.insert(names.begin(), "at");
  return names;
}

struct ReadStep {
  Step step;
  std::string kind;
};

ReadStep readStep(const Field& field, std::int64_t before) {
  std::optional<StepAction> action;
  std::string kind;
  std::int64_t at = before;
  field.eachMember([&](const std::string& name, const Field& value) {
    if (name == "at") {
      at = value.integer(0, kLastMillisecond);
      if (at < before) {
        value.fail(fmt::format("must not be less than {}, that of the step before", before));
      }
      return;
    }
    const auto reader = actionReaders().find(name);
    if (reader == actionReaders().end()) value.failAsUnknown(fieldsOfSteps());
    if (action)
      value.fail(fmt::format("a step does one thing only, and this one has \"{}\"", kind));
    action = reader->second(value);
    kind = name;
  });
  if (!action) {
    field.fail(
        fmt::format("a step must do something; allowed: {}", listed(namesOf(actionReaders()))));
  }
  return {{at, *action}, kind};
}

/// Reads the step `{"at": 12, "axes": [0, 1, 0, 0, 0, 0]},` as it is usually written: most steps of
/// a long scenario are samples. Everything else, also what is wrong, is left to the parser.
class SampleReader {
 public:
  explicit SampleReader(std::string_view text) : text_(text) {}

  /// The number of bytes with the comma; 0 if the text does not begin with such a step.
  std::size_t read(Step& step) {
    DeviceMessage message = plainMessage();
    bool good = take('{') && takeKey("at") && takeNumber(step.at) && take(',') && takeKey("axes") &&
                take('[');
    for (std::size_t i = 0; good && i < message.axes.size(); ++i) {
      good = (i == 0 || take(',')) && takeNumber(message.axes[i]);
    }
    if (!good || !take(']') || !take('}') || !take(',')) return 0;
    step.action = MessageStep{message};
    return at_;
  }

 private:
  bool take(char wanted) {
    while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
    if (at_ >= text_.size() || text_[at_] != wanted) return false;
    ++at_;
    return true;
  }

  bool takeKey(std::string_view name) {
    if (!take('"') || !text_.substr(at_).starts_with(name)) return false;
    at_ += name.size();
    return take('"') && take(':');
  }

  /// A whole number of few digits, without the forms that JSON does not know.
  template <class Number>
  bool takeNumber(Number& number) {
    while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
    const char* const begin = text_.data() + at_;
    const char* const end = text_.data() + text_.size();
    const auto [stop, error] = std::from_chars(begin, end, number);
    const bool plain =
        error == std::errc() && stop < end && (*stop == ',' || *stop == ']' || isBlank(*stop));
    const char* const digits = *begin == '-' ? begin + 1 : begin;
    const bool leadingZero = *digits == '0' && (stop - digits > 1 || digits != begin);
    if (!plain || leadingZero) return false;
    at_ += static_cast<std::size_t>(stop - begin);
    return true;
  }

  static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

  std::string_view text_;
  std::size_t at_ = 0;
};

using StepReceiver = std::function<void(const Step&, const StepPlace&)>;

/// Reads the document once: the steps go to `take`, everything else to `scenario`. Names of action
/// files are relative to `folder`.
void readDocument(const ByteSource& source, const std::filesystem::path& folder, Scenario& scenario,
                  const StepReceiver& take) {
  const FieldReaders readers = {
      {"host", [&](const Field& value) { scenario.host = readHost(value, folder); }},
      {"layout", [&](const Field& value) { scenario.layout = value.text(); }},
      {"mouse", [&](const Field& value) { scenario.mouse = readPoint(value); }},
      {"modifiers", [&](const Field& value) { scenario.modifiers = readModifiers(value); }},
      {"framework", [&](const Field& value) { scenario.framework = value.boolean(); }},
      // A list of steps is read step by step and does not come here.
      {"steps", [](const Field& value) { value.fail("must be a list"); }},
  };
  std::int64_t before = 0;
  JsonPieces pieces;
  pieces.streamed = "steps";
  pieces.document = [](const Json& value) { Field(value, "").fail("must be an object"); };
  pieces.member = [&](const std::string& name, const Json& value) {
    const Field field(value, "/" + pointerStep(name));
    const auto reader = readers.find(name);
    if (reader == readers.end()) field.failAsUnknown(namesOf(readers));
    reader->second(field);
  };
  pieces.element = [&](const Json& value, std::uint64_t index, Position position) {
    const ReadStep read = readStep(Field(value, fmt::format("/steps/{}", index)), before);
    before = read.step.at;
    take(read.step, {index, position, read.kind});
  };
  Step sample;
  pieces.quick = [&](std::string_view text, std::uint64_t index, Position position) {
    const std::size_t size = SampleReader(text).read(sample);
    const bool good = size > 0 && sample.at >= before && sample.at <= kLastMillisecond;
    if (!good) return std::size_t{0};
    before = sample.at;
    take(sample, {index, position, "axes"});
    return size;
  };
  readJson(source, pieces);
}

std::string lineOf(const std::string& name, Position at, const std::string& reason) {
  return fmt::format("{}:{}:{}: {}", name, at.line, at.column, reason);
}

/// The same, but a fault becomes `BadScenario` with its place.
void readDocument(const ByteSource& source, const std::string& name, Scenario& scenario,
                  const StepReceiver& take) {
  try {
    readDocument(source, std::filesystem::path(name).parent_path(), scenario, take);
  } catch (const JsonError& error) {
    throw BadScenario(lineOf(name, error.position(), error.what()));
  } catch (const Fault& fault) {
    const JsonPlace place = placeOf(source, fault.place);
    const Position at = fault.atKey && place.key ? *place.key : place.value;
    throw BadScenario(
        lineOf(name, at, fmt::format("{}: {}", printablePlace(fault.place), fault.reason)));
  }
}

/// What to note about a name that is not known; empty if it is.
std::string noteOn(const char* what, const std::string& name,
                   const std::vector<std::string>& known) {
  if (std::find(known.begin(), known.end(), name) != known.end()) return {};
  return fmt::format("the {} \"{}\" is not known{}", what, printable(name), guess(name, known));
}

std::string noteOnCall(const CallStep& call) {
  const std::string caller = noteOn("caller", call.caller, knownCallers());
  if (!caller.empty()) return fmt::format("{}; known: {}", caller, listed(knownCallers()));
  const std::vector<std::string> selectors = knownSelectors(call.caller);
  const std::string note = noteOn("selector", call.selector, selectors);
  return note.empty() ? note
                      : fmt::format("{}; \"{}\" sends {}", note, call.caller, listed(selectors));
}

std::string noteOnTool(const std::string& tool) { return noteOn("tool", tool, knownTools()); }

std::string noteOnLayout(const std::string& layout) {
  const std::string note = noteOn("layout", layout, knownLayouts());
  return note.empty() ? note : note + "; it has the brush keys of " + knownLayouts().front();
}

std::string noteOn(const Step& step) {
  if (const auto* call = std::get_if<CallStep>(&step.action)) return noteOnCall(*call);
  if (const auto* tool = std::get_if<ToolStep>(&step.action)) return noteOnTool(tool->tool);
  if (const auto* layout = std::get_if<LayoutStep>(&step.action)) {
    return noteOnLayout(layout->layout);
  }
  return {};
}

}  // namespace

ScenarioFile::ScenarioFile(InputFile input) : input_(std::move(input)) {
  std::set<std::string> noted;
  readDocument(input_, name(), setup_, [&](const Step& step, const StepPlace& place) {
    ++steps_;
    const std::string note = noteOn(step);
    if (note.empty() || noted.size() >= kMostNotes || !noted.insert(note).second) return;
    notes_.push_back(lineOf(name(), place.position,
                            fmt::format("/steps/{}/{}: {}", place.index, place.kind, note)));
  });
  noteUnknownNames();
}

/// Those outside the steps come first.
void ScenarioFile::noteUnknownNames() {
  std::vector<std::string> notes;
  const auto add = [&](const char* pointer, const std::string& note) {
    if (!note.empty()) notes.push_back(faultAt(input_, name(), pointer, note));
  };
  add("/host/tool", noteOnTool(setup_.host.tool));
  add("/layout", noteOnLayout(setup_.layout));
  notes_.insert(notes_.begin(), notes.begin(), notes.end());
}

void ScenarioFile::eachStep(const StepReceiver& take) const {
  Scenario again;
  readDocument(input_, name(), again, take);
}

Scenario parseScenario(const std::string& text, const std::string& name) {
  Scenario scenario;
  readDocument(TextSource(text), name, scenario,
               [&](const Step& step, const StepPlace&) { scenario.steps.push_back(step); });
  return scenario;
}

std::vector<std::string> stepNames() { return namesOf(actionReaders()); }

}  // namespace simulator
