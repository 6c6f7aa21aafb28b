#include "mac/Inputs.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "simulator/base/Json.h"

namespace mrvmac {

namespace {

using simulator::Json;
using simulator::jsonOf;

constexpr std::uint32_t kRawKeyDown = 1;

Input wheelOf(const Json& line) {
  const Json& wheels = line.at("wheels");
  Input input;
  input.vertical = wheels.at(0).get<std::int64_t>();
  if (wheels.size() > 1) input.horizontal = wheels.at(1).get<std::int64_t>();
  input.flags = line.at("flags").get<std::uint64_t>() & (kOptionFlag | kCommandFlag);
  return input;
}

Input keyOf(const Json& line) {
  Input input;
  input.kind = InputKind::kKey;
  input.key = line.at("key").get<std::uint32_t>();
  input.down = line.at("down").get<bool>();
  return input;
}

Input typedKeyOf(const Json& line) {
  Input input;
  input.kind = InputKind::kTypedKey;
  input.down = line.at("kind").get<std::uint32_t>() == kRawKeyDown;
  for (const Json& parameter : line.at("parameters")) {
    if (parameter.at(0) == "kcod") input.key = parameter.at(2).get<std::uint32_t>();
  }
  return input;
}

void addInput(const Json& line, std::vector<Input>& inputs) {
  const std::string what = line.at("what").get<std::string>();
  if (what == "wheel") inputs.push_back(wheelOf(line));
  if (what == "key") inputs.push_back(keyOf(line));
  if (what == "posted" && line.at("class") == "keyb") inputs.push_back(typedKeyOf(line));
}

std::string modifiers(std::uint64_t flags) {
  std::string text;
  if ((flags & kOptionFlag) != 0) text += " with option";
  if ((flags & kCommandFlag) != 0) text += " with command";
  return text;
}

std::string describeAt(const std::vector<Input>& inputs, std::size_t place) {
  return place < inputs.size() ? describe(inputs[place]) : "nothing";
}

}  // namespace

std::string describe(const Input& input) {
  if (input.kind == InputKind::kWheel) {
    return fmt::format("wheel {} {}{}", input.vertical, input.horizontal, modifiers(input.flags));
  }
  const char* const kind = input.kind == InputKind::kKey ? "key" : "typed key";
  return fmt::format("{} {} {}", kind, input.key, input.down ? "down" : "up");
}

std::vector<Input> parseExpectedInputs(const std::string& text, const std::string& name) {
  std::vector<Input> inputs;
  int number = 0;
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    ++number;
    try {
      addInput(jsonOf(line), inputs);
    } catch (const Json::exception&) {
      throw BadLog(fmt::format("{}:{}: not a line of a log that mrvsim play wrote", name, number));
    }
  }
  if (number == 0) throw BadLog(fmt::format("{}: the log is empty", name));
  return inputs;
}

Comparison compareInputs(const std::vector<Input>& expected, const std::vector<Input>& arrived) {
  const auto [one, other] =
      std::mismatch(expected.begin(), expected.end(), arrived.begin(), arrived.end());
  if (one == expected.end() && other == arrived.end()) return {};
  const auto place = static_cast<std::size_t>(one - expected.begin());
  return {false, fmt::format("input {} of {}: expected {}, arrived {}", place + 1, expected.size(),
                             describeAt(expected, place), describeAt(arrived, place))};
}

std::vector<Input> only(const std::vector<Input>& inputs, InputKind kind) {
  std::vector<Input> chosen;
  std::copy_if(inputs.begin(), inputs.end(), std::back_inserter(chosen),
               [kind](const Input& input) { return input.kind == kind; });
  return chosen;
}

std::vector<Input> without(const std::vector<Input>& inputs, InputKind kind) {
  std::vector<Input> chosen;
  std::copy_if(inputs.begin(), inputs.end(), std::back_inserter(chosen),
               [kind](const Input& input) { return input.kind != kind; });
  return chosen;
}

}  // namespace mrvmac
