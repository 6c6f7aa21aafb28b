#include "mrvsim/ActionOutline.h"

#include <fmt/format.h>

#include <utility>
#include <variant>

#include "actionfiles/ActionFileReader.h"
#include "simulator/base/Log.h"
#include "simulator/base/Text.h"
#include "simulator/host/actions/ActionFileHost.h"

namespace simulator {

namespace {

/// A name in quotation marks, on one line.
std::string quoted(const std::string& name) { return Json(wellFormed(name)).dump(); }

std::string idLabel(std::uint32_t id, const TypeIds& ids) {
  const std::string* string = ids.stringOf(id);
  return string != nullptr ? quoted(*string) : fmt::format("'{}'", idText(id));
}

std::string counted(std::size_t count, const char* what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

std::string countsText(const char* what, const Counts& counts) {
  std::string text;
  for (const auto& [name, count] : counts) {
    text += fmt::format("{}{} {}", text.empty() ? "" : ", ", count, name);
  }
  return fmt::format("{}: {}\n", what, text.empty() ? "none" : text);
}

std::string stepText(std::size_t number, const StepOutline& step) {
  const std::string content = step.hasDescriptor ? counted(step.descriptors, "descriptor") + ", " +
                                                       counted(step.items, "item")
                                                 : "no descriptor";
  return fmt::format("    step {} {}, event {}{}: {}\n", number, quoted(step.name), step.event,
                     step.enabled ? "" : ", disabled", content);
}

std::string actionText(std::size_t number, const ActionOutline& action) {
  std::string text = fmt::format("  action {} {}: {}\n", number, quoted(action.name),
                                 counted(action.steps.size(), "step"));
  for (std::size_t i = 0; i < action.steps.size(); ++i) text += stepText(i + 1, action.steps[i]);
  return text;
}

}  // namespace

void SetOutline::add(const RecordedStep& step, const TypeIds& ids) {
  StepOutline& outline = actions.back().steps.emplace_back();
  outline.name = step.name;
  outline.event = idLabel(step.event, ids);
  outline.enabled = step.enabled;
  outline.hasDescriptor = step.parameters != nullptr;
  if (!outline.hasDescriptor) return;
  ++outline.descriptors;
  ++descriptors["outermost"];
  std::vector<const Container*> open = {step.parameters.get()};
  while (!open.empty()) {
    const Container& container = *open.back();
    open.pop_back();
    for (const Entry& entry : container.entries) {
      ++outline.items;
      ++items[fmt::format("'{}'", idText(entry.item.type))];
      if (const auto* object = std::get_if<Object>(&entry.item.value)) {
        ++outline.descriptors;
        ++descriptors[idLabel(object->type, ids)];
      }
      if (const NestedContainer* inner = nested(entry.item)) open.push_back(inner->get());
    }
  }
}

SetOutline outlineOf(actionfiles::ByteSource& source) {
  actionfiles::ActionFileReader reader(source);
  TypeIds ids;
  SetOutline set{.name = reader.set().name.utf8};
  while (const actionfiles::ActionHead* action = reader.nextAction()) {
    set.actions.push_back({.name = action->name.utf8});
    while (const actionfiles::Step* step = reader.nextStep()) set.add(hostStep(*step, ids), ids);
  }
  return set;
}

std::string outlineText(const SetOutline& set) {
  std::size_t steps = 0;
  for (const ActionOutline& action : set.actions) steps += action.steps.size();
  std::string text = fmt::format("set {}: {}, {}\n", quoted(set.name),
                                 counted(set.actions.size(), "action"), counted(steps, "step"));
  for (std::size_t i = 0; i < set.actions.size(); ++i) text += actionText(i + 1, set.actions[i]);
  text += countsText("descriptors", set.descriptors);
  text += countsText("items", set.items);
  return text;
}

}  // namespace simulator
