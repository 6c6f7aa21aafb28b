#include "codegen/ReadyFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "codegen/ContainerKinds.h"
#include "codegen/ContainerWalker.h"
#include "codegen/HostValues.h"
#include "codegen/Literals.h"
#include "codegen/ReadyItems.h"
#include "codegen/SourceWriter.h"

namespace {

constexpr std::string_view kHead =
    R"(// Recorded actions as functions. C++17, generated; RecordedSteps.h describes what is declared here.
//
// Compile with the root of MrvPhotoshop and its folders "platform", "platform/host" and, except on a
// Mac, "platform/macos" as include folders; the host's published headers may take the place of
// "platform/host". Link with mrv::codegen and mrv::suites, and set sSPBasic before the first call.

#include <PIActions.h>
#include <PIGeneral.h>

#include "codegen/RecordedSteps.h"
#include "suites/HostObjects.h"
#include "suites/Suites.h"

// Recorded data may be longer than the literals that every compiler must take.
#pragma GCC diagnostic ignored "-Woverlength-strings"

)";

constexpr std::string_view kTail =
    R"(    {nullptr, nullptr, 0},
};

int PlayAction(const char* setName, const char* actionName) {
  return playRecordedAction(kRecordedActions, kRecordedSteps, setName, actionName);
}
)";

std::string functionName(std::size_t action, const ReadyStep& step) {
  const std::string part = identifierPart(step.name);
  return "play" + std::to_string(action) + "_" + std::to_string(step.number) +
         (part.empty() ? "" : "_" + part);
}

std::string stepComment(std::string_view set, std::string_view action, const ReadyStep& step) {
  return "Set \"" + commentText(set) + "\", action \"" + commentText(action) + "\", step " +
         std::to_string(step.number) + " \"" + commentText(step.name) + "\"" +
         (step.isEnabled ? "" : ", not enabled: PlayAction leaves it out");
}

std::string row(std::string_view set, std::string_view action) {
  return "    {" + stringLiteral(set) + ", " + stringLiteral(action) + ", ";
}

}  // namespace

ReadyFile::ReadyFile(std::FILE* stream) : out_(stream), function_(names_, out_) {
  out_.write(kHead);
}

void ReadyFile::beginAction(std::string_view set, std::string_view action, std::size_t number) {
  endAction();
  set_ = set;
  action_ = action;
  actionNumber_ = number;
  stepCount_ = 0;
}

bool ReadyFile::addStep(const ReadyStep& step, std::uint32_t eventID,
                        PIActionDescriptor descriptor) {
  function_.begin(functionName(actionNumber_, step));
  if (!holdActionSuites()) {
    function_.lacks("the host has no action suites");
  } else if (descriptor != nullptr) {
    if (!ContainerWalk<ReadyItems>(function_).run<DescriptorKind>(descriptor)) {
      function_.lacks("the host does not report the number of items");
    }
  }
  function_.end(stepComment(set_, action_, step), eventID);
  const bool isComplete = function_.isComplete();
  ++stepCount_;
  steps_ += row(set_, action_) + stringLiteral(step.name) + ", " + function_.name() +
            (step.isEnabled ? ", true" : ", false") +
            (isComplete ? ", true},\n" : ", false},  // incomplete\n");
  return isComplete;
}

void ReadyFile::finish() {
  endAction();
  out_.write(
      "// Every step: its set, its action, its name, its function, whether it is enabled, whether "
      "it is\n"
      "// complete.\n"
      "static const RecordedStep kRecordedSteps[] = {\n",
      std::string_view(steps_),
      "    {nullptr, nullptr, nullptr, nullptr, false, false},\n};\n\n"
      "const RecordedAction kRecordedActions[] = {\n",
      std::string_view(actions_), kTail);
  out_.flush();
}

void ReadyFile::endAction() {
  if (actionNumber_ == 0) return;
  actions_ += row(set_, action_) + std::to_string(stepCount_) + "},\n";
  actionNumber_ = 0;
}
