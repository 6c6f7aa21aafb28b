#include "mac/Report.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace mrvmac {

namespace {

const char* verdict(std::optional<bool> holds) {
  if (!holds) return "not tested";
  return *holds ? "yes" : "no";
}

template <class... Values>
void line(std::string& out, fmt::format_string<Values...> format, Values&&... values) {
  fmt::format_to(std::back_inserter(out), format, std::forward<Values>(values)...);
  out += '\n';
}

void writeBeliefs(std::string& out, const Observations& seen) {
  line(out, "\nBeliefs");
  for (const Belief& belief : beliefs()) {
    line(out, "  {:<11} {:<19} {}", verdict(belief.holds(seen)), belief.name, belief.sentence);
  }
}

std::string number(const std::optional<std::uint64_t>& value) {
  return value ? std::to_string(*value) : "not counted";
}

void writeCounts(std::string& out, const Observations& seen) {
  line(out, "\nCounts");
  line(out, "  device messages sent {}, delivered {}", number(seen.messagesSent),
       number(seen.messagesDelivered));
  line(out, "  redraws {}, refresh callbacks {}", seen.redraws, number(seen.refreshes));
  line(out, "  inputs expected {}, at the tap {}, in the window {}", seen.expected.size(),
       seen.atTap.size(), seen.inWindow.size());
  const Comparison comparison = compareAtTap(seen);
  if (!comparison.equal) line(out, "  first difference: {}", comparison.difference);
}

void writeInputs(std::string& out, const char* title, const std::vector<Input>& inputs) {
  line(out, "\n{}", title);
  for (const Input& input : inputs) line(out, "  {}", describe(input));
  if (inputs.empty()) line(out, "  none");
}

}  // namespace

std::string writeReport(const Observations& seen) {
  std::string out;
  line(out, "Report of mrvmac");
  line(out, "  system      {}", seen.system);
  line(out, "  processor   {}", seen.processor);
  line(out, "  permission  {}", verdict(seen.permission));
  writeBeliefs(out, seen);
  writeCounts(out, seen);
  for (const std::string& misuse : seen.misuses) line(out, "  misuse: {}", misuse);
  writeInputs(out, "Expected", seen.expected);
  writeInputs(out, "Arrived at the tap", seen.atTap);
  writeInputs(out, "Arrived in the window", seen.inWindow);
  return out;
}

int exitStatus(const Observations& seen) {
  const auto fails = [&](const Belief& belief) { return !belief.holds(seen).value_or(true); };
  return std::any_of(beliefs().begin(), beliefs().end(), fails) ? 1 : 0;
}

}  // namespace mrvmac
