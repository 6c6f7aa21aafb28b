// The main program that a source file of `mrvsim dump --ready` is linked with. It plays every
// action of the file and compares what the simulated host receives, item by item, with the action
// file:
//
//     PROGRAM ACTIONS.atn             prints how many steps were compared
//     PROGRAM ACTIONS.atn --faults    also lets every host call fail in turn, and looks for leaks
//
// A path item comes back as an alias, because the host's suites put no paths. Numbers are compared
// bit by bit. The files that paths name need not exist. The exit status is 1 if anything differs.
#include <fmt/format.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "actionfiles/ByteSource.h"
#include "codegen/RecordedSteps.h"
#include "platform/host/HostTerms.h"
#include "platform/host/PIGeneral.h"
#include "simulator/base/Faults.h"
#include "simulator/base/Log.h"
#include "simulator/host/Host.h"
#include "simulator/host/actions/ActionFileHost.h"
#include "simulator/macos/Aliases.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/MemoryHandles.h"
#include "suites/BasicSuite.h"
#include "suites/Suites.h"
#include "tests/support/AlteredSuite.h"

namespace {

using namespace simulator;

int faults = 0;

template <class... Arguments>
void complain(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
  ++faults;
  fmt::print(stderr, "{}\n", fmt::format(format, std::forward<Arguments>(arguments)...));
}

struct ReceivedStep {
  DescriptorEventID event = 0;
  bool hasDescriptor = false;
  ContainerPtr descriptor;
};

std::vector<ReceivedStep> received;

OSErr receive(PIActionDescriptor* result, DescriptorEventID event, PIActionDescriptor descriptor,
              PIDialogPlayOptions options) {
  if (const auto error = theFaults().strike("ActionControl.Play")) {
    return static_cast<OSErr>(*error);
  }
  if (options != plugInDialogSilent) complain("the dialog option is {}", options);
  *result = nullptr;
  received.push_back({event, descriptor != nullptr,
                      descriptor != nullptr ? theHost().contentOf(descriptor) : nullptr});
  return 0;
}

SPErr aliasOfAnyPath(const char* path, AliasHandle* alias) {
  if (const auto error = theFaults().strike("AliasSuite.MacNewAliasFromCString")) return *error;
  *alias = makeAlias(path, "AliasSuite.MacNewAliasFromCString");
  return 0;
}

/// Plays an action on a host that has handed out no suites but those of which a procedure is
/// replaced here.
int play(const std::string& set, const std::string& action,
         const std::optional<FaultRule>& fault = {}) {
  theFaults().clear();
  PIUSuitesRelease();
  received.clear();
  int result = 0;
  {
    testing_support::AlteredSuite control(sPSActionControl);
    control->Play = receive;
    testing_support::AlteredSuite aliases(sPSAlias);
    aliases->MacNewAliasFromCString = aliasOfAnyPath;
    if (fault) theFaults().add(*fault);
    result = PlayAction(set.c_str(), action.c_str());
  }
  return result;
}

std::string bitsOf(double number) {
  return {reinterpret_cast<const char*>(&number), sizeof number};
}

/// The item as it comes back, with numbers as their bits.
Item comparable(Item item);

ContainerPtr comparable(const Container& container) {
  auto result = std::make_shared<Container>();
  for (const Entry& entry : container.entries) {
    result->entries.push_back({entry.key, comparable(entry.item)});
  }
  return result;
}

Item comparable(Item item) {
  if (item.type == kTypePath) item.type = kTypeAlias;
  if (auto* object = std::get_if<Object>(&item.value)) {
    object->content = comparable(*object->content);
  } else if (auto* list = std::get_if<List>(&item.value)) {
    list->content = comparable(*list->content);
  } else if (const auto* number = std::get_if<double>(&item.value)) {
    item.value = Data{bitsOf(*number)};
  } else if (const auto* unitFloat = std::get_if<UnitFloat>(&item.value)) {
    item.value = Data{std::to_string(unitFloat->unit) + bitsOf(unitFloat->value)};
  }
  return item;
}

/// Whether the host's suites can put everything in a descriptor.
bool canBePut(const Container& container) {
  for (const Entry& entry : container.entries) {
    if (std::holds_alternative<std::monostate>(entry.item.value)) return false;
    const NestedContainer* inner = nested(entry.item);
    if (inner != nullptr && !canBePut(**inner)) return false;
  }
  return true;
}

bool isComplete(const simulator::RecordedStep& step) {
  return step.parameters == nullptr || canBePut(*step.parameters);
}

/// The part of a name that a C string holds.
std::string cString(const std::string& name) { return name.c_str(); }

std::string json(const NestedContainer& descriptor) {
  return descriptorToJson(*descriptor, theHost().typeIds()).dump();
}

bool isSame(const simulator::RecordedStep& step, const ReceivedStep& played) {
  if (step.event != played.event) return false;
  if ((step.parameters != nullptr) != played.hasDescriptor) return false;
  return !played.hasDescriptor ||
         equal(*comparable(*step.parameters), *comparable(*played.descriptor));
}

struct Counts {
  int compared = 0, disabled = 0, incomplete = 0, shadowed = 0;
};

/// The first action of the set that has the name; PlayAction finds no other one.
const Action& firstOf(const ActionSet& set, const std::string& name) {
  for (const Action& action : set.actions) {
    if (cString(action.name) == name) return action;
  }
  std::abort();
}

void compare(const Action& action, int result, Counts& counts) {
  std::size_t next = 0;
  for (const simulator::RecordedStep& step : action.steps) {
    if (!step.enabled) {
      ++counts.disabled;
    } else if (!isComplete(step)) {
      ++counts.incomplete;
      if (result != errPlugInHostInsufficient) complain("an incomplete step gives {}", result);
      result = 0;
      break;
    } else if (next == received.size()) {
      complain("action \"{}\": step \"{}\" was not played", action.name, step.name);
    } else if (const ReceivedStep& played = received[next++]; isSame(step, played)) {
      ++counts.compared;
    } else {
      complain("action \"{}\", step \"{}\": event {} became {}\nexpected {}\nreceived {}",
               action.name, step.name, step.event, played.event,
               step.parameters ? json(step.parameters) : "nothing",
               played.hasDescriptor ? json(played.descriptor) : "nothing");
    }
  }
  if (next != received.size()) complain("action \"{}\": more was played", action.name);
  if (result != 0) complain("action \"{}\": the result is {}", action.name, result);
}

void expectNothingLeft(const std::string& when) {
  if (theHost().objectsOwned() != 0) complain("{}: objects of the host are left", when);
  if (theMemoryHandles().owned() != 0) complain("{}: handles are left", when);
  if (theCFObjects().live() != 0) complain("{}: Core Foundation objects are left", when);
}

bool isRelease(const std::string& procedure) {
  return procedure.ends_with("Free") || procedure.ends_with("Release") ||
         procedure.ends_with("ReleaseSuite") || procedure.ends_with("Dispose") ||
         procedure.ends_with("DisposeRegularHandle");
}

/// Lets each call of the procedure ("*": of any) fail in turn. Returns the number of failures.
int failEachCall(const std::string& procedure, const std::string& set, const std::string& action) {
  constexpr std::int32_t kError = -1234;
  for (int call = 0;; ++call) {
    const FaultRule fault = {procedure, kError, static_cast<std::uint64_t>(call)};
    const int result = play(set, action, fault);
    if (theFaults().fired() == 0) return call;
    const std::string failed = theFaults().lastFired();
    if (result == 0 && !isRelease(failed)) complain("{} failed unnoticed", failed);
    expectNothingLeft(failed + " failed");
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  theLog().setSink([](const Json& line) {
    if (line["what"] == "misuse") complain("misuse: {}", line["text"].get<std::string>());
  });
  sSPBasic = theHost().basicSuite();
  // The host numbers string IDs otherwise than the one in which the file was written.
  theHost().typeIds().idOf("an earlier string");
  actionfiles::FileSource source(argv[1]);
  const ActionSet set = readActionSet(source, theHost().typeIds());
  const bool withFaults = argc > 2 && std::strcmp(argv[2], "--faults") == 0;

  Counts counts;
  int failures = 0;
  std::size_t index = 0;
  for (const ::RecordedAction* entry = kRecordedActions; entry->action != nullptr; ++entry) {
    if (index == set.actions.size()) {
      complain("there are more actions than in the file");
      break;
    }
    const Action& action = set.actions[index++];
    if (entry->set != cString(set.name) || entry->action != cString(action.name) ||
        static_cast<std::size_t>(entry->steps) != action.steps.size()) {
      complain("action {} is listed as \"{}\", \"{}\", {}", index, entry->set, entry->action,
               entry->steps);
    }
    const Action& first = firstOf(set, entry->action);
    if (&first != &action) {
      counts.shadowed += static_cast<int>(action.steps.size());
      continue;
    }
    if (withFaults) {
      failures += failEachCall("ActionControl.StringIDToTypeID", entry->set, entry->action);
      failures += failEachCall("*", entry->set, entry->action);
    }
    compare(first, play(entry->set, entry->action), counts);
    expectNothingLeft("after an action");
  }
  if (index != set.actions.size()) complain("actions are missing");
  if (PlayAction("no such set", "") != errMissingParameter) complain("a set is invented");
  if (PlayAction(nullptr, nullptr) != errMissingParameter) complain("null is taken for a name");
  PIUSuitesRelease();
  fmt::print("{} compared, {} disabled, {} incomplete, {} of a second action of the same name{}\n",
             counts.compared, counts.disabled, counts.incomplete, counts.shadowed,
             withFaults ? fmt::format(", {} failures", failures) : "");
  return faults == 0 ? 0 : 1;
}
