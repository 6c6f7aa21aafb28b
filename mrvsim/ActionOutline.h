// What an action file holds: names and numbers, without the values.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "actionfiles/ByteSource.h"
#include "simulator/host/model/Model.h"
#include "simulator/host/model/TypeIds.h"

namespace simulator {

/// How often each name occurs.
using Counts = std::map<std::string, std::size_t>;

struct StepOutline {
  std::string name;   ///< of the command
  std::string event;  ///< a code in apostrophes, or a string ID in quotation marks
  bool enabled = true;
  bool hasDescriptor = false;
  std::size_t descriptors = 0;  ///< with those that lie in others
  std::size_t items = 0;
};

struct ActionOutline {
  std::string name;
  std::vector<StepOutline> steps = {};
};

struct SetOutline {
  std::string name;
  std::vector<ActionOutline> actions = {};
  Counts descriptors = {};  ///< by class; those of the steps themselves are "outermost"
  Counts items = {};        ///< by type

  /// Adds a step to the last action.
  void add(const RecordedStep& step, const TypeIds& ids);
};

/// Reads a whole action file. Throws actionfiles::ActionFileError.
SetOutline outlineOf(actionfiles::ByteSource& source);

/// The outline as lines of text.
std::string outlineText(const SetOutline& set);

}  // namespace simulator
