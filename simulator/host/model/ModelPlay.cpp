#include "simulator/host/model/ModelPlay.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "simulator/host/model/HostErrors.h"
#include "simulator/host/model/ModelQuery.h"

namespace simulator {

namespace {

constexpr double kSmallestBrush = 1.0;
constexpr double kLargestBrush = 5000.0;

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

ContainerPtr playAction(Model& model, const Container& parameters) {
  const Action& action = namedAction(model, parameter<Reference>(parameters, kKeyTarget));
  if (action.error != 0) throw CallError{action.error};
  auto result = std::make_shared<Container>();
  if (action.message) result->put(kKeyMessage, {kTypeText, Text{*action.message}});
  recordInHistory(model, action.name);
  return result;
}

}  // namespace

ContainerPtr playEvent(Model& model, DescriptorEventID event, const Container& parameters,
                       TypeIds& ids) {
  switch (event) {
    case kEventSet:
      setBrush(model, parameters, ids);
      break;
    case kEventSelect:
      selectTool(model, parameters, ids);
      break;
    case kEventPlay:
      return playAction(model, parameters);
    default:
      throw CallError{kCommandNotAvailable};
  }
  return std::make_shared<Container>();
}

}  // namespace simulator
