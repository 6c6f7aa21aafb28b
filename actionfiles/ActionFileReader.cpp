#include "actionfiles/ActionFileReader.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "actionfiles/ActionFile.h"
#include "actionfiles/ByteInput.h"
#include "actionfiles/ByteSource.h"
#include "actionfiles/TextDecoding.h"
#include "platform/FourCharCode.h"

namespace actionfiles {

namespace {

constexpr std::uint32_t kOlderVersion = 12;

// Kinds of event IDs.
constexpr std::uint32_t kStringEvent = fourCharCode("TEXT");
constexpr std::uint32_t kCodeEvent = fourCharCode("long");

// The fewest bytes that each of these takes.
constexpr std::size_t kLeastAction = 15;
constexpr std::size_t kLeastStep = 20;

}  // namespace

ActionFileReader::ActionFileReader(ByteSource& source) : in_(source), parts_(in_) {
  readVersion();
  parts_.text(set_.name);
  set_.expanded = in_.flag("whether the set is expanded");
  set_.actions = actionsLeft_ = in_.count(kLeastAction, "a number of actions");
}

void ActionFileReader::readVersion() {
  const std::uint32_t version = in_.u32("the version 16 of an action file");
  if (version == kVersion) return;
  std::string found = std::to_string(version);
  if (version == kOlderVersion) found += ", which is older and has another layout";
  in_.fail(0, "the version 16 of an action file", found);
}

const ActionHead* ActionFileReader::nextAction() {
  while (nextStep() != nullptr) {
    // Skipped.
  }
  if (actionsLeft_ == 0) {
    if (!in_.atEnd()) in_.fail(in_.offset(), "the end of the file", "further bytes");
    return nullptr;
  }
  --actionsLeft_;
  action_.functionKey = in_.u16("a function key");
  action_.shift = in_.flag("whether the shift key is held");
  action_.command = in_.flag("whether the command key is held");
  action_.colour = in_.u16("a colour");
  parts_.text(action_.name);
  action_.expanded = in_.flag("whether the action is expanded");
  action_.steps = stepsLeft_ = in_.count(kLeastStep, "a number of steps");
  return &action_;
}

Step* ActionFileReader::nextStep() {
  if (stepsLeft_ == 0) return nullptr;
  --stepsLeft_;
  step_ = Step();
  step_.expanded = in_.flag("whether the step is expanded");
  step_.enabled = in_.flag("whether the step is enabled");
  step_.withDialog = in_.flag("whether the step has a dialog");
  step_.dialogOptions = in_.u8("a step's dialog options");
  readEvent();
  const std::uint32_t length = in_.count(1, "the length of a command's name");
  step_.name = utf8FromMacRoman(in_.view(length, buffer_, "the rest of a command's name"));
  step_.mark = in_.i32("whether a descriptor follows");
  if (step_.mark != 0) parts_.descriptor(step_.descriptor);
  return &step_;
}

void ActionFileReader::readEvent() {
  const std::uint64_t offset = in_.offset();
  const std::uint32_t kind = in_.u32("an event ('TEXT' or 'long')");
  if (kind == kStringEvent) {
    const std::uint32_t length = in_.count(1, "the length of an event's string ID");
    if (length == 0)
      in_.fail(in_.offset() - sizeof length, "the length of an event's string ID", "0");
    step_.event = Id(in_.view(length, buffer_, "the rest of an event's string ID"));
  } else if (kind == kCodeEvent) {
    step_.event = Id(in_.u32("an event's code"));
  } else {
    in_.fail(offset, "an event ('TEXT' or 'long')", quotedCode(kind));
  }
}

}  // namespace actionfiles
