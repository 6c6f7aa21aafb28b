#include "mrvsim/DumpActions.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <memory>
#include <stdexcept>

#include "actionfiles/ActionFileReader.h"
#include "codegen/DumpDescriptor.h"
#include "codegen/ReadyFile.h"
#include "codegen/SourceWriter.h"
#include "hostutil/File.h"
#include "simulator/host/Host.h"
#include "simulator/host/actions/ActionFileHost.h"
#include "simulator/scenario/Wording.h"
#include "suites/HostObjects.h"

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

/// The host's object for a step's descriptor, freed after the step, so that one is in memory at a
/// time.
ActionDescriptor hostDescriptorOf(const RecordedStep& step) {
  if (!step.parameters) return {};
  return ActionDescriptor(theHost().makeDescriptor(std::make_shared<Container>(*step.parameters)));
}

/// Appends each step to a file, in the plain form.
class PlainSteps {
 public:
  explicit PlainSteps(const std::string& file) : file_(file) {}

  void beginAction(const std::string& set, const std::string& action, std::size_t) {
    set_ = set;
    action_ = action;
  }

  void addStep(const RecordedStep& step, std::size_t number) {
    writeComment(step, number);
    PIUDumpDescriptor(step.event, hostDescriptorOf(step).get(), file_.c_str());
  }

  void finish() {}

 private:
  void writeComment(const RecordedStep& step, std::size_t number) const {
    const File file(std::fopen(file_.c_str(), "a"));
    SourceWriter out(file.get());
    out.line("// Set \"", CommentText{set_}, "\", action \"", CommentText{action_}, "\", step ",
             static_cast<std::int64_t>(number), " \"", CommentText{step.name}, "\"",
             step.enabled ? "" : ", not enabled");
  }

  const std::string& file_;
  std::string set_;
  std::string action_;
};

/// Writes the steps as one source file, in the ready form.
class ReadySteps {
 public:
  explicit ReadySteps(const std::string& file)
      : file_(std::fopen(file.c_str(), "a")), ready_(file_.get()) {}

  void beginAction(const std::string& set, const std::string& action, std::size_t number) {
    ready_.beginAction(set, action, number);
  }

  void addStep(const RecordedStep& step, std::size_t number) {
    ready_.addStep({step.name, number, step.enabled}, step.event, hostDescriptorOf(step).get());
  }

  void finish() { ready_.finish(); }

 private:
  File file_;
  ReadyFile ready_;
};

template <class Steps>
void writeSteps(actionfiles::ByteSource& source, const ChosenSteps& chosen,
                const GeneratorSide& generator) {
  Steps out(generator.file);
  actionfiles::ActionFileReader reader(source);
  const std::string set = reader.set().name.utf8;
  std::size_t actionNumber = 0;
  while (const actionfiles::ActionHead* action = reader.nextAction()) {
    const ChosenAction& wanted = chosen.at(actionNumber++);
    if (wanted.isChosen) out.beginAction(set, action->name.utf8, actionNumber);
    std::size_t stepNumber = 0;
    while (const actionfiles::Step* recorded = reader.nextStep()) {
      generator.reached(reader.offset());
      if (!wanted.steps.at(stepNumber++)) continue;
      out.addStep(hostStep(*recorded, theHost().typeIds()), stepNumber);
    }
  }
  out.finish();
}

}  // namespace

ChosenSteps chosenSteps(const StepChoice& choice, const SetOutline& set, const std::string& file) {
  if (!any(chosen(choice.set, {set.name}))) failChoice(file, "--set", *choice.set, "set", 1);
  const std::vector<bool> actions = chosen(choice.action, namesOf(set.actions));
  if (choice.action && !any(actions)) {
    failChoice(file, "--action", *choice.action, "action", actions.size());
  }
  ChosenSteps chosenOnes(actions.size());
  std::size_t most = 0;
  bool found = false;
  for (std::size_t i = 0; i < actions.size(); ++i) {
    ChosenAction& one = chosenOnes[i];
    one.steps.resize(set.actions[i].steps.size());
    if (!actions[i]) continue;
    one.steps = chosen(choice.step, namesOf(set.actions[i].steps));
    one.isChosen = !choice.step || any(one.steps);
    most = std::max(most, one.steps.size());
    found |= any(one.steps);
  }
  if (choice.step && !found) failChoice(file, "--step", *choice.step, "step", most);
  return chosenOnes;
}

void dumpActions(actionfiles::ByteSource& source, const ChosenSteps& steps,
                 const GeneratorSide& generator) {
  writeSteps<PlainSteps>(source, steps, generator);
}

void dumpReadyActions(actionfiles::ByteSource& source, const ChosenSteps& steps,
                      const GeneratorSide& generator) {
  writeSteps<ReadySteps>(source, steps, generator);
}

}  // namespace simulator
