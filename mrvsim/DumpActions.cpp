#include "mrvsim/DumpActions.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <memory>
#include <stdexcept>

#include "actionfiles/ActionFileReader.h"
#include "codegen/DumpDescriptor.h"
#include "codegen/SourceWriter.h"
#include "hostutil/File.h"
#include "simulator/host/Host.h"
#include "simulator/host/actions/ActionFileHost.h"
#include "simulator/scenario/Wording.h"
#include "suites/Suites.h"

namespace simulator {

namespace {

/// The positions of what `wanted` names: every position of that name, or else the one of that
/// number. Empty if there is none.
std::vector<std::size_t> positionsOf(const std::string& wanted,
                                     const std::vector<std::string>& names) {
  std::vector<std::size_t> positions;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] == wanted) positions.push_back(i);
  }
  if (!positions.empty()) return positions;
  std::size_t number = 0;
  const char* end = wanted.data() + wanted.size();
  const auto [stop, error] = std::from_chars(wanted.data(), end, number);
  const bool isNumber = error == std::errc() && stop == end;
  if (isNumber && number >= 1 && number <= names.size()) positions.push_back(number - 1);
  return positions;
}

std::vector<bool> chosen(const std::optional<std::string>& wanted,
                         const std::vector<std::string>& names) {
  std::vector<bool> result(names.size(), !wanted);
  if (wanted) {
    for (const std::size_t position : positionsOf(*wanted, names)) result[position] = true;
  }
  return result;
}

bool any(const std::vector<bool>& choices) {
  return std::find(choices.begin(), choices.end(), true) != choices.end();
}

[[noreturn]] void failChoice(const std::string& file, const char* option, const std::string& wanted,
                             const char* what, std::size_t count) {
  throw std::runtime_error(
      fmt::format("{}: {} {}: there is no such {}; allowed are 1 to {} and the names that --list "
                  "shows",
                  printableFile(file), option, printable(wanted), what, count));
}

template <class Named>
std::vector<std::string> namesOf(const std::vector<Named>& things) {
  std::vector<std::string> names;
  for (const Named& thing : things) names.push_back(thing.name);
  return names;
}

/// Writes the comment before a step's function.
void writeComment(const std::string& output, const std::string& set, const std::string& action,
                  std::size_t number, const RecordedStep& step) {
  const File file(std::fopen(output.c_str(), "a"));
  SourceWriter out(file.get());
  out.line("// Set \"", CommentText{set}, "\", action \"", CommentText{action}, "\", step ",
           static_cast<std::int64_t>(number), " \"", CommentText{step.name}, "\"",
           step.enabled ? "" : ", not enabled");
}

/// Frees the host's descriptor after the dump, so that one step is in memory at a time.
void dumpStep(const RecordedStep& step, const std::string& output) {
  const PIActionDescriptor descriptor =
      step.parameters ? theHost().makeDescriptor(std::make_shared<Container>(*step.parameters))
                      : nullptr;
  PIUDumpDescriptor(step.event, descriptor, output.c_str());
  if (descriptor != nullptr) sPSActionDescriptor->Free(descriptor);
}

}  // namespace

ChosenSteps chosenSteps(const StepChoice& choice, const SetOutline& set, const std::string& file) {
  if (!any(chosen(choice.set, {set.name}))) failChoice(file, "--set", *choice.set, "set", 1);
  const std::vector<bool> actions = chosen(choice.action, namesOf(set.actions));
  if (choice.action && !any(actions)) {
    failChoice(file, "--action", *choice.action, "action", actions.size());
  }
  ChosenSteps steps(actions.size());
  std::size_t most = 0;
  bool found = false;
  for (std::size_t i = 0; i < actions.size(); ++i) {
    steps[i].resize(set.actions[i].steps.size());
    if (!actions[i]) continue;
    steps[i] = chosen(choice.step, namesOf(set.actions[i].steps));
    most = std::max(most, steps[i].size());
    found |= any(steps[i]);
  }
  if (choice.step && !found) failChoice(file, "--step", *choice.step, "step", most);
  return steps;
}

void dumpActions(actionfiles::ByteSource& source, const ChosenSteps& steps,
                 const GeneratorSide& generator) {
  actionfiles::ActionFileReader reader(source);
  const std::string set = reader.set().name.utf8;
  std::size_t actionIndex = 0;
  while (const actionfiles::ActionHead* action = reader.nextAction()) {
    const std::vector<bool>& wanted = steps.at(actionIndex++);
    std::size_t stepIndex = 0;
    while (const actionfiles::Step* recorded = reader.nextStep()) {
      generator.reached(reader.offset());
      if (!wanted.at(stepIndex++)) continue;
      const RecordedStep step = hostStep(*recorded, theHost().typeIds());
      writeComment(generator.file, set, action->name.utf8, stepIndex, step);
      dumpStep(step, generator.file);
    }
  }
}

}  // namespace simulator
