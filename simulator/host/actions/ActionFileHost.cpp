#include "simulator/host/actions/ActionFileHost.h"

#include <memory>
#include <utility>
#include <variant>

#include "actionfiles/ActionFileReader.h"
#include "actionfiles/FilePath.h"

namespace simulator {

namespace {

Text hostText(const actionfiles::Text& text) { return {text.utf8, ExactUnits(text.units)}; }

Enumerated hostEnumerated(const actionfiles::Enumerated& value, TypeIds& ids) {
  const DescriptorEnumTypeID type = hostID(value.type, ids);
  return {type, hostID(value.value, ids)};
}

/// Sets what the value of a form says.
struct FormWriter {
  Form& form;
  TypeIds& ids;

  void operator()(std::monostate) const {}
  void operator()(const actionfiles::Id& key) const { form.value = hostID(key, ids); }
  void operator()(const actionfiles::Enumerated& value) const {
    const Enumerated numbers = hostEnumerated(value, ids);
    form.enumType = numbers.type;
    form.value = numbers.value;
  }
  void operator()(std::int32_t offset) const { form.value = static_cast<std::uint32_t>(offset); }
  void operator()(std::uint32_t number) const { form.value = number; }
  void operator()(const actionfiles::Boxed<actionfiles::Text>& name) const {
    Text text = hostText(*name);
    form.name = std::move(text.utf8);
    form.exactName = std::move(text.exact);
  }
};

Form hostForm(const actionfiles::Form& recorded, TypeIds& ids) {
  Form form;
  form.form = recorded.form;
  form.desiredClass = hostID(recorded.desiredClass.id, ids);
  std::visit(FormWriter{form, ids}, recorded.value);
  return form;
}

/// The file of an alias, a path item or a bookmark. A path says everything that a path item does;
/// the bytes of the others hold more than can be read from them.
FilePath hostFile(std::uint32_t type, const std::string& bytes) {
  std::optional<actionfiles::Text> path;
  if (type == actionfiles::kPath) path = actionfiles::pathOf(bytes);
  if (path) return {std::move(path->utf8)};
  if (type == actionfiles::kAlias) path = actionfiles::fileNameOfAlias(bytes);
  return {path ? std::move(path->utf8) : "", bytes};
}

Item hostItem(const actionfiles::Value& value, TypeIds& ids);

/// The value of an item of type `type`.
struct ValueReader {
  std::uint32_t type;
  TypeIds& ids;

  Value operator()(std::int32_t value) const { return value; }
  Value operator()(std::int64_t value) const { return value; }
  Value operator()(double value) const { return value; }
  Value operator()(bool value) const { return value; }
  Value operator()(const actionfiles::UnitFloat& value) const {
    return UnitFloat{value.unit, value.value};
  }
  Value operator()(const actionfiles::Enumerated& value) const {
    return hostEnumerated(value, ids);
  }
  Value operator()(const actionfiles::Boxed<actionfiles::ClassName>& value) const {
    return ClassID{hostID(value->id, ids)};
  }
  Value operator()(const actionfiles::Boxed<actionfiles::Descriptor>& value) const {
    const DescriptorClassID objectClass = hostID(value->type.id, ids);
    return Object{objectClass, hostDescriptor(*value, ids)};
  }
  Value operator()(const actionfiles::List& list) const {
    auto content = std::make_shared<Container>();
    for (const actionfiles::Value& value : list.values) {
      content->entries.push_back({0, hostItem(value, ids)});
    }
    return List{std::move(content)};
  }
  Value operator()(const actionfiles::Reference& recorded) const {
    Reference reference;
    for (const actionfiles::Form& form : recorded) reference.push_back(hostForm(form, ids));
    return reference;
  }
  Value operator()(const actionfiles::Boxed<actionfiles::Text>& text) const {
    return hostText(*text);
  }
  Value operator()(const actionfiles::Data& data) const {
    if (type == actionfiles::kRawData) return Data{data.bytes};
    return hostFile(type, data.bytes);
  }
  Value operator()(const actionfiles::UnitFloats&) const { return std::monostate(); }
  Value operator()(const actionfiles::Boxed<actionfiles::ObjectArray>&) const {
    return std::monostate();
  }
};

// Recursion is as deep as the reader lets a file nest.
Item hostItem(const actionfiles::Value& value, TypeIds& ids) {
  return {value.type, std::visit(ValueReader{value.type, ids}, value.content)};
}

}  // namespace

std::uint32_t hostID(const actionfiles::Id& id, TypeIds& ids) {
  return id.isString() ? ids.idOf(id.string()) : id.code();
}

ContainerPtr hostDescriptor(const actionfiles::Descriptor& descriptor, TypeIds& ids) {
  auto content = std::make_shared<Container>();
  for (const actionfiles::Item& item : descriptor.items) {
    const DescriptorKeyID key = hostID(item.key, ids);
    content->put(key, hostItem(item.value, ids));
  }
  return content;
}

RecordedStep hostStep(const actionfiles::Step& step, TypeIds& ids) {
  RecordedStep recorded{.event = hostID(step.event, ids),
                        .name = step.name,
                        .enabled = step.enabled,
                        .dialog = static_cast<PIDialogPlayOptions>(step.dialogOptions)};
  if (step.mark != 0) recorded.parameters = hostDescriptor(step.descriptor, ids);
  return recorded;
}

ActionSet readActionSet(actionfiles::ByteSource& source, TypeIds& ids) {
  actionfiles::ActionFileReader reader(source);
  ActionSet set;
  set.name = reader.set().name.utf8;
  while (const actionfiles::ActionHead* head = reader.nextAction()) {
    Action& action = set.actions.emplace_back();
    action.name = head->name.utf8;
    while (const actionfiles::Step* step = reader.nextStep()) {
      action.steps.push_back(hostStep(*step, ids));
    }
  }
  return set;
}

void loadActionFiles(const std::vector<std::string>& files, Model& model, TypeIds& ids) {
  std::vector<ActionSet> sets;
  std::uint32_t lastAction = 0;
  for (const std::string& file : files) {
    actionfiles::FileSource source(file);
    sets.push_back(readActionSet(source, ids));
    sets.back().id = static_cast<std::uint32_t>(sets.size());
    for (Action& action : sets.back().actions) action.id = ++lastAction;
  }
  model.actionSets = std::move(sets);
}

}  // namespace simulator
