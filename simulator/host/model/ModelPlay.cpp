#include "simulator/host/model/ModelPlay.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simulator/host/model/HostErrors.h"
#include "simulator/host/model/ModelQuery.h"

namespace simulator {

namespace {

constexpr double kSmallestBrush = 1.0;
constexpr double kLargestBrush = 5000.0;
constexpr std::size_t kDeepestPlay = 64;

template <class T>
const T& parameter(const Container& parameters, DescriptorKeyID key) {
  const Item* item = parameters.find(key);
  if (item == nullptr) throw CallError{errMissingParameter};
  const T* value = std::get_if<T>(&item->value);
  if (value == nullptr) throw CallError{kWrongDataType};
  return *value;
}

/// The first form of the reference to the event's target.
const Form& targetForm(const Container& parameters) {
  const Reference& target = parameter<Reference>(parameters, kKeyTarget);
  if (target.empty()) throw CallError{errMissingParameter};
  return target.front();
}

// NaN is out of every range.
void setWithin(double& property, double value, double least, double most) {
  if (!(value >= least && value <= most)) throw CallError{paramErr};
  property = value;
}

void setBrushProperty(Brush& brush, std::string_view name, double value) {
  if (name == "masterDiameter") {
    setWithin(brush.diameter, value, kSmallestBrush, kLargestBrush);
  } else if (name == "hardness") {
    setWithin(brush.hardness, value, 0.0, 100.0);
  } else if (name == "spacing") {
    setWithin(brush.spacing, value, 1.0, 1000.0);
  }
}

// Ignores properties that a brush does not have, as the host does.
void setBrush(Model& model, const Container& parameters, const TypeIds& ids) {
  const Form& target = targetForm(parameters);
  if (target.desiredClass != kClassBrush || !model.brush) throw CallError{kCommandNotAvailable};
  Brush changed = *model.brush;
  for (const Entry& entry : parameter<Object>(parameters, kKeyTo).content->entries) {
    const auto* value = std::get_if<UnitFloat>(&entry.item.value);
    if (value == nullptr) throw CallError{kWrongDataType};
    if (const std::string* name = ids.stringOf(entry.key)) {
      setBrushProperty(changed, *name, value->value);
    }
  }
  model.brush = changed;
}

// The target's class is the number of the tool's string ID.
void selectTool(Model& model, const Container& parameters, const TypeIds& ids) {
  const Form& target = targetForm(parameters);
  const std::string* tool = ids.stringOf(target.desiredClass);
  if (target.form != kFormClass || tool == nullptr) throw CallError{kCommandNotAvailable};
  model.tool = *tool;
}

void recordInHistory(Model& model, const std::string& name) {
  if (model.currentDocument >= model.documents.size()) return;
  Document& document = model.documents[model.currentDocument];
  document.history.push_back(name);
  document.dirty = true;
}

/// The code of an event that a string ID names; other events are returned as they are.
DescriptorEventID eventCode(DescriptorEventID event, const TypeIds& ids) {
  const std::string* name = ids.stringOf(event);
  if (name == nullptr) return event;
  if (*name == "set") return kEventSet;
  if (*name == "select") return kEventSelect;
  if (*name == "play") return kEventPlay;
  return event;
}

/// Plays an event, and the actions and steps that it leads to.
class Playback {
 public:
  Playback(Model& model, TypeIds& ids, const StepObserver& observe)
      : model_(model), ids_(ids), observe_(observe) {}

  ContainerPtr play(DescriptorEventID event, const Container& parameters) {
    switch (eventCode(event, ids_)) {
      case kEventSet:
        setBrush(model_, parameters, ids_);
        break;
      case kEventSelect:
        selectTool(model_, parameters, ids_);
        break;
      case kEventPlay:
        return playAction(namedAction(model_, parameter<Reference>(parameters, kKeyTarget)));
      default:
        throw CallError{kCommandNotAvailable};
    }
    return std::make_shared<Container>();
  }

 private:
  ContainerPtr playAction(const ActionInSet& target) {
    const Action& action = target.action;
    if (action.error != 0) throw CallError{action.error};
    const bool playsItself = std::find(open_.begin(), open_.end(), &action) != open_.end();
    if (playsItself || open_.size() == kDeepestPlay) throw CallError{kCommandNotAvailable};
    open_.push_back(&action);
    for (std::size_t i = 0; i < action.steps.size(); ++i) playStep(target, i);
    open_.pop_back();
    auto result = std::make_shared<Container>();
    if (action.message) result->put(kKeyMessage, {kTypeText, Text{*action.message}});
    recordInHistory(model_, action.name);
    return result;
  }

  void playStep(const ActionInSet& target, std::size_t index) {
    const RecordedStep& step = target.action.steps[index];
    if (!step.enabled) return;
    const OSErr result = resultOf(step);
    if (observe_) observe_({target.set, target.action, index, result});
    if (result != 0 && result != kCommandNotAvailable) throw CallError{result};
  }

  OSErr resultOf(const RecordedStep& step) {
    static const Container kNone;
    const std::size_t depth = open_.size();
    try {
      play(step.event, step.parameters ? *step.parameters : kNone);
      return 0;
    } catch (const CallError& failure) {
      open_.resize(depth);
      return static_cast<OSErr>(failure.error);
    }
  }

  Model& model_;
  TypeIds& ids_;
  const StepObserver& observe_;
  std::vector<const Action*> open_;  ///< the actions being played, each by the one before
};

}  // namespace

ContainerPtr playEvent(Model& model, DescriptorEventID event, const Container& parameters,
                       TypeIds& ids, const StepObserver& observe) {
  return Playback(model, ids, observe).play(event, parameters);
}

}  // namespace simulator
