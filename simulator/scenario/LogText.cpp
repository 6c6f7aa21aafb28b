#include "simulator/scenario/LogText.h"

#include <CoreGraphics/CoreGraphics.h>
#include <fmt/format.h>

#include <array>
#include <map>

#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

constexpr std::size_t kLongestText = 400;

// Colours of terminals.
constexpr char kRed[] = "31";
constexpr char kGreen[] = "32";
constexpr char kYellow[] = "33";
constexpr char kCyan[] = "36";
constexpr char kDim[] = "2";
constexpr char kUncoloured[] = "";

std::string fieldText(const Json& value) {
  return printable(value.is_string() ? value.get<std::string>()
                                     : value.dump(-1, ' ', false, Json::error_handler_t::replace),
                   kLongestText);
}

/// "; error N" for a host's or the system's error code.
std::string errorText(const Json& result) {
  return result == 0 ? "" : fmt::format("; error {}", fieldText(result));
}

/// "name value, name value" of all fields but the time and the kind.
std::string fieldsText(const Json& line) {
  std::string text;
  for (const auto& [name, value] : line.items()) {
    if (name == "t" || name == "what") continue;
    text += fmt::format("{}{} {}", text.empty() ? "" : ", ", name, fieldText(value));
  }
  return text;
}

std::string resultText(const Json& line) {
  return fmt::format("the entry point returned {}", fieldText(line["value"]));
}

std::string suiteText(const Json& line) {
  return fmt::format("{} {} version {}{}", fieldText(line["do"]), fieldText(line["name"]),
                     fieldText(line["version"]), errorText(line["result"]));
}

std::string frameworkText(const Json& line) {
  const std::string what = fieldText(line["do"]);
  if (what == "install") return "install the message handler" + errorText(line["result"]);
  if (what == "register") {
    return fmt::format("register client {} for {}, mode {}, mask {}", fieldText(line["client"]),
                       fieldText(line["signature"]), fieldText(line["mode"]),
                       fieldText(line["mask"]));
  }
  return line.contains("client") ? fmt::format("{} client {}", what, fieldText(line["client"]))
                                 : what;
}

std::string threadText(const Json& line) {
  return fmt::format("{}, stack {} bytes", fieldText(line["do"]), fieldText(line["stack"]));
}

std::string handlerText(const Json& line) {
  std::string types;
  for (const Json& type : line["types"]) {
    types +=
        fmt::format("{}{} {}", types.empty() ? "" : ", ", fieldText(type[0]), fieldText(type[1]));
  }
  return fmt::format("{} for events {}", fieldText(line["do"]), types);
}

std::string doText(const Json& line) { return fieldText(line["do"]); }

std::string suppressionText(const Json& line) {
  return fmt::format("real input waits {} s after synthesized input", fieldText(line["seconds"]));
}

/// The value of a posted event's parameter; empty if it has none of that name.
std::string parameterText(const Json& line, const char* name) {
  for (const Json& parameter : line["parameters"]) {
    if (parameter[0] == name) return fieldText(parameter[2]);
  }
  return {};
}

std::string motionText(const Json& line) {
  std::string text = "device moved";
  for (const char* axis : {"tpnx", "tpny", "tpnz"}) {
    text += fmt::format(" {:>6}", parameterText(line, axis));
  }
  text += ", turned";
  for (const char* axis : {"trtx", "trty", "trtz"}) {
    text += fmt::format(" {:>6}", parameterText(line, axis));
  }
  return text;
}

/// The device's events and keys in words, and of others all that they hold.
std::string postedText(const Json& line) {
  const std::string kind = fieldText(line["class"]) + " " + fieldText(line["kind"]);
  if (kind == "mrvE 1") {
    return fmt::format("device button {} {}", parameterText(line, "tbtn"),
                       parameterText(line, "tbts") == "1" ? "pressed" : "released");
  }
  if (kind == "mrvE 2") return motionText(line);
  if (kind == "mrvE 5") return "device command " + parameterText(line, "tpac");
  if (kind == "keyb 1") return "key " + parameterText(line, "kcod") + " down";
  if (kind == "keyb 3") return "key " + parameterText(line, "kcod") + " up";
  std::string text = "event " + kind;
  for (const Json& parameter : line["parameters"]) {
    text += fmt::format(", {} {}", fieldText(parameter[0]), fieldText(parameter[2]));
  }
  return text;
}

std::string keyName(const Json& code) {
  static const std::map<int, const char*> names = {
      {55, "command"}, {56, "shift"}, {58, "option"}, {59, "control"}};
  const auto name = code.is_number_integer() ? names.find(code.get<int>()) : names.end();
  return name == names.end() ? "key " + fieldText(code) : name->second;
}

std::string keyText(const Json& line) {
  return fmt::format("{} {}", keyName(line["key"]), line["down"] == true ? "down" : "up");
}

/// The modifiers of an event at a tap. The plug-in's own code names only option and command.
std::string flagsText(std::uint64_t flags) {
  struct Flag {
    std::uint64_t bit;
    const char* name;
  };
  constexpr std::array kFlags = {Flag{0x20000, "shift"}, Flag{0x40000, "control"},
                                 Flag{kCGEventFlagMaskAlternate, "option"},
                                 Flag{kCGEventFlagMaskCommand, "command"}};
  std::string text;
  for (const Flag& flag : kFlags) {
    if ((flags & flag.bit) != 0)
      text += fmt::format("{}{}", text.empty() ? ", with " : " and ", flag.name);
  }
  return text;
}

std::string wheelText(const Json& line) {
  const Json& wheels = line["wheels"];
  std::string text = fmt::format("vertical {}", fieldText(wheels[0]));
  if (wheels.size() > 1) text += fmt::format(", horizontal {}", fieldText(wheels[1]));
  return text + flagsText(line["flags"].get<std::uint64_t>()) +
         fmt::format(", at ({}, {})", fieldText(line["location"][0]),
                     fieldText(line["location"][1]));
}

std::string clickText(const Json& line) {
  return fmt::format("{}, {}", fieldText(line["kind"]),
                     line["passed"] == true ? "passed on to the host" : "held back");
}

/// One form of a reference, such as "HstV" for a property or "capp Trgt" for an object.
std::string formText(const Json& form) {
  if (form.contains("key")) return fieldText(form["key"]);
  const std::string name = fieldText(form["class"]);
  return form.contains("value") ? name + " " + fieldText(form["value"]) : name;
}

std::string getLineText(const Json& line) {
  std::string text;
  for (const Json& form : line["reference"]) {
    text += (text.empty() ? "" : " of ") + formText(form);
  }
  return text + errorText(line["result"]);
}

std::string playLineText(const Json& line) {
  return fmt::format("{} with {}{}", fieldText(line["event"]), fieldText(line["descriptor"]),
                     errorText(line["result"]));
}

std::string viewText(const Json& line) {
  const Json& brush = line["brush"];
  return fmt::format("zoom {:.1f} %, corner ({:.1f}, {:.1f}), brush {}",
                     line["zoom"].get<double>() * 100, line["origin"][0].get<double>(),
                     line["origin"][1].get<double>(),
                     brush.is_null() ? "none" : fmt::format("{:g} px", brush.get<double>()));
}

std::string onlyText(const Json& line) { return fieldText(line["text"]); }

struct LineForm {
  std::string (*text)(const Json& line);
  const char* colour;
};

const LineForm& lineFormOf(const std::string& what) {
  static const std::map<std::string, LineForm> forms = {
      {"result", {resultText, kUncoloured}},
      {"suite", {suiteText, kDim}},
      {"framework", {frameworkText, kUncoloured}},
      {"thread", {threadText, kUncoloured}},
      {"handler", {handlerText, kDim}},
      {"refreshCallback", {doText, kDim}},
      {"suppression", {suppressionText, kDim}},
      {"posted", {postedText, kUncoloured}},
      {"key", {keyText, kYellow}},
      {"wheel", {wheelText, kCyan}},
      {"click", {clickText, kYellow}},
      {"get", {getLineText, kDim}},
      {"play", {playLineText, kUncoloured}},
      {"view", {viewText, kGreen}},
      {"printed", {onlyText, kUncoloured}},
      {"debug", {onlyText, kUncoloured}},
      {"syslog", {onlyText, kUncoloured}},
      {"misuse", {onlyText, kRed}},
  };
  static const LineForm kOtherForm = {fieldsText, kUncoloured};
  const auto form = forms.find(what);
  return form == forms.end() ? kOtherForm : form->second;
}

}  // namespace

std::string logWords(const Json& line) {
  return lineFormOf(line["what"].get_ref<const std::string&>()).text(line);
}

std::string logText(const Json& line, bool isColoured) {
  constexpr double kMillisecondsInSecond = 1000;
  const auto& what = line["what"].get_ref<const std::string&>();
  const LineForm& form = lineFormOf(what);
  const std::string_view colour = line.value("result", Json(0)) == 0 ? form.colour : kRed;
  std::string text =
      fmt::format("{:10.3f} s  {:15}  {}", line["t"].get<double>() / kMillisecondsInSecond, what,
                  form.text(line));
  if (isColoured && !colour.empty()) text = fmt::format("\x1B[{}m{}\x1B[0m", colour, text);
  return text + '\n';
}

}  // namespace simulator
