#include "mrvsim/report/LogEntry.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <utility>
#include <vector>

#include "simulator/scenario/JsonFile.h"
#include "simulator/scenario/JsonStream.h"
#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

/// The parameters of a posted sample in the order in which the plug-in sets them, with their places
/// in `axes`: the second and third translation have changed places, and so have the rotations.
struct AxisParameter {
  std::string_view name;
  std::size_t axis;
};
constexpr std::array<AxisParameter, 6> kAxisParameters = {
    {{"tpnx", 0}, {"tpny", 2}, {"tpnz", 1}, {"trtx", 3}, {"trty", 5}, {"trtz", 4}}};

/// The last time that a scenario can have.
constexpr std::int64_t kLastMillisecond = std::numeric_limits<std::int64_t>::max() / 1000000;
constexpr std::int64_t kMost32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::int64_t kLeast32 = std::numeric_limits<std::int32_t>::min();

struct EntryFault {
  std::string place;
  std::string reason;
};

/// A value of a line, with its place as a JSON pointer.
struct Value {
  const Json& json;
  std::string place;

  [[noreturn]] void fail(const std::string& reason) const { throw EntryFault{place, reason}; }
  Value at(std::size_t index) const { return {json[index], fmt::format("{}/{}", place, index)}; }
};

using Check = void (*)(const Value& value);

void text(const Value& value) {
  if (!value.json.is_string()) value.fail("must be a text");
}

void truth(const Value& value) {
  if (!value.json.is_boolean()) value.fail("must be true or false");
}

/// A number beyond the range of numbers is written as null.
void numberOrNull(const Value& value) {
  if (!value.json.is_number() && !value.json.is_null()) value.fail("must be a number or null");
}

void number(const Value& value) {
  if (!value.json.is_number()) value.fail("must be a number");
}

void wholeNumber(const Value& value, std::int64_t least, std::int64_t most) {
  const Json& json = value.json;
  const bool isWhole = json.is_number_integer();
  const bool fits = isWhole && !(json.is_number_unsigned() &&
                                 json.get<std::uint64_t>() > static_cast<std::uint64_t>(most));
  if (fits && json.get<std::int64_t>() >= least && json.get<std::int64_t>() <= most) return;
  value.fail(fmt::format("must be a whole number from {} to {}", least, most));
}

void time(const Value& value) { wholeNumber(value, 0, kLastMillisecond); }
void word32(const Value& value) { wholeNumber(value, kLeast32, kMost32); }
void unsigned32(const Value& value) { wholeNumber(value, 0, kMost32); }

void flags(const Value& value) {
  if (!value.json.is_number_unsigned()) value.fail("must be a whole number of 0 or more");
}

void anything(const Value&) {}

void list(const Value& value, std::size_t least, std::size_t most, const char* whatItIs,
          Check element) {
  const bool isList = value.json.is_array();
  if (!isList || value.json.size() < least || value.json.size() > most) {
    value.fail(fmt::format("must be {}", whatItIs));
  }
  for (std::size_t i = 0; i < value.json.size(); ++i) element(value.at(i));
}

constexpr std::size_t kAnyLength = std::numeric_limits<std::size_t>::max();

void pointOrNull(const Value& value) { list(value, 2, 2, "[x, y]", numberOrNull); }
void wheels(const Value& value) { list(value, 1, 2, "one or two whole numbers", word32); }

void eventTypes(const Value& value) {
  list(value, 0, kAnyLength, "a list of [class, kind]",
       [](const Value& pair) { list(pair, 2, 2, "[class, kind]", anything); });
}

void parameter(const Value& value) {
  list(value, 3, 3, "[name, type, value]", anything);
  text(value.at(0));
}

void parameters(const Value& value) {
  list(value, 0, kAnyLength, "a list of [name, type, value]", parameter);
}

void reference(const Value& value) {
  list(value, 0, kAnyLength, "a list of objects", [](const Value& form) {
    const bool isForm =
        form.json.is_object() && (form.json.contains("key") || form.json.contains("class"));
    if (!isForm) form.fail("must be an object with a key or a class");
  });
}

void clickKind(const Value& value) {
  const auto kinds = {"down", "up", "moved", "dragged"};
  const bool isKnown =
      std::any_of(kinds.begin(), kinds.end(), [&](const char* kind) { return value.json == kind; });
  if (!isKnown) value.fail(R"(must be "down", "up", "moved" or "dragged")");
}

/// The fields of each kind of line that the report and its words use.
using Fields = std::vector<std::pair<std::string, Check>>;

const std::map<std::string, Fields>& fieldsOfKinds() {
  static const std::map<std::string, Fields> kinds = {
      {"result", {{"value", word32}}},
      {"suite", {{"do", text}, {"name", anything}, {"version", anything}, {"result", word32}}},
      {"framework", {{"do", text}}},
      {"thread", {{"do", text}, {"stack", anything}}},
      {"handler", {{"do", text}, {"types", eventTypes}}},
      {"refreshCallback", {{"do", text}}},
      {"suppression", {{"seconds", numberOrNull}}},
      {"posted", {{"class", text}, {"kind", unsigned32}, {"parameters", parameters}}},
      {"key", {{"key", unsigned32}, {"down", truth}}},
      {"wheel", {{"wheels", wheels}, {"flags", flags}, {"location", pointOrNull}}},
      {"click", {{"kind", clickKind}, {"passed", truth}}},
      {"get", {{"reference", reference}, {"result", word32}}},
      {"play", {{"event", anything}, {"descriptor", anything}, {"result", word32}}},
      {"property", {{"result", word32}}},
      {"printed", {{"text", text}}},
      {"debug", {{"text", text}}},
      {"syslog", {{"text", text}}},
      {"view", {{"zoom", number}, {"origin", pointOrNull}, {"brush", numberOrNull}}},
      {"misuse", {{"text", text}}},
  };
  return kinds;
}

/// What a call of the framework holds besides `do`.
Fields frameworkFields(const Json& line) {
  if (line["do"] == "install") return {{"result", word32}};
  if (line["do"] != "register") return {};
  return {{"signature", anything}, {"mode", anything}, {"mask", anything}, {"client", anything}};
}

void expectFields(const Json& line, const Fields& fields) {
  for (const auto& [name, check] : fields) {
    const auto member = line.find(name);
    if (member == line.end()) {
      std::vector<std::string> names;
      for (const auto& field : fields) names.push_back(field.first);
      throw EntryFault{"/" + name, fmt::format("is missing; needed: {}", listed(names))};
    }
    check({*member, "/" + name});
  }
}

/// Throws EntryFault.
void expectEntry(const Json& line) {
  if (!line.is_object()) throw EntryFault{"", "must be an object with t and what"};
  expectFields(line, {{"t", time}, {"what", text}});
  const auto& what = line["what"].get_ref<const std::string&>();
  const auto& kinds = fieldsOfKinds();
  const auto kind = kinds.find(what);
  if (kind == kinds.end()) {
    std::vector<std::string> names;
    for (const auto& known : kinds) names.push_back(known.first);
    throw EntryFault{"/what", fmt::format("unknown kind \"{}\"{}; allowed: {}", printable(what),
                                          guess(what, names), listed(names))};
  }
  expectFields(line, kind->second);
  if (what == "framework") expectFields(line, frameworkFields(line));
}

/// Takes a text from the front of another if it is there.
bool take(std::string_view& from, std::string_view expected) {
  if (!from.starts_with(expected)) return false;
  from.remove_prefix(expected.size());
  return true;
}

/// Takes a number as JSON has it.
template <class Number>
bool takeNumber(std::string_view& from, Number& number) {
  const auto [end, error] = std::from_chars(from.data(), from.data() + from.size(), number);
  const auto size = static_cast<std::size_t>(end - from.data());
  const std::string_view digits = from.substr(from.starts_with('-') ? 1 : 0, size);
  const bool isJson = error == std::errc() && (digits[0] != '0' || digits.size() <= 1 ||
                                               digits[1] < '0' || digits[1] > '9');
  from.remove_prefix(size);
  return isJson;
}

/// The value of an axis. Another plug-in may post anything; what is not an axis counts as 0.
std::int16_t axisIn(const Json& value) {
  const double number = value.is_number() ? value.get<double>() : 0.0;
  const bool fits = number >= std::numeric_limits<std::int16_t>::min() &&
                    number <= std::numeric_limits<std::int16_t>::max();
  return fits ? static_cast<std::int16_t>(number) : std::int16_t{0};
}

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\r'; }

}  // namespace

std::optional<PostedSample> quickSample(std::string_view text) {
  PostedSample sample;
  constexpr std::string_view kBefore =
      R"(,"what":"posted","class":"mrvE","kind":2,"priority":2,"parameters":)";
  if (!take(text, R"({"t":)") || !takeNumber(text, sample.time) || !take(text, kBefore)) {
    return std::nullopt;
  }
  for (const auto& [name, axis] : kAxisParameters) {
    const bool isThere = take(text, name == "tpnx" ? "[[\"" : ",[\"") && take(text, name) &&
                         take(text, R"(","shor",)") && takeNumber(text, sample.axes[axis]) &&
                         take(text, "]");
    if (!isThere) return std::nullopt;
  }
  std::int64_t stamp = 0;
  const bool ends = take(text, R"(,["ttim","comp",)") && takeNumber(text, stamp) && text == "]]}";
  const bool isInRange = sample.time >= 0 && sample.time <= kLastMillisecond;
  return ends && isInRange ? std::optional(sample) : std::nullopt;
}

Json readLogEntry(std::string_view text) {
  Json line;
  JsonPieces pieces;
  pieces.document = [&](Json whole) { line = std::move(whole); };
  const TextSource source(text);
  try {
    readJson(source, pieces);
    expectEntry(line);
  } catch (const JsonError& error) {
    throw BadLogEntry(error.position().column, error.what());
  } catch (const EntryFault& fault) {
    throw BadLogEntry(placeOf(source, fault.place).value.column,
                      fmt::format("{}: {}", printablePlace(fault.place), fault.reason));
  }
  return line;
}

std::optional<PostedSample> sampleIn(const Json& line) {
  if (line["what"] != "posted" || line["class"] != "mrvE" || line["kind"] != 2) return std::nullopt;
  PostedSample sample;
  sample.time = line["t"].get<std::int64_t>();
  for (const Json& parameter : line["parameters"]) {
    for (const auto& [name, axis] : kAxisParameters) {
      if (parameter[0] == name) sample.axes[axis] = axisIn(parameter[2]);
    }
  }
  return sample;
}

void eachLine(const ByteSource& source,
              const std::function<void(std::string_view text, std::uint64_t number)>& take) {
  constexpr std::size_t kLongest = 64 << 20;
  std::array<char, 65536> piece;
  std::string line;
  std::uint64_t number = 0;
  std::uint64_t offset = 0;
  while (const std::size_t size = source.read(offset, piece.data(), piece.size())) {
    offset += size;
    for (std::string_view rest(piece.data(), size); !rest.empty();) {
      const auto end = std::find_if(rest.begin(), rest.end(), isControl);
      const auto length = static_cast<std::size_t>(end - rest.begin());
      const bool isEnded = end != rest.end() || line.size() + length > kLongest;
      line += rest.substr(0, length);
      if (end != rest.end() && *end != '\n') line += *end;
      rest.remove_prefix(std::min(length + 1, rest.size()));
      if (!isEnded) break;
      take(line, ++number);
      line.clear();
    }
  }
  if (!line.empty()) take(line, ++number);
}

}  // namespace simulator
