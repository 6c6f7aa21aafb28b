#include "simulator/host/model/ModelQuery.h"

#include <algorithm>
#include <span>
#include <utility>

#include "platform/FourCharCode.h"
#include "simulator/host/model/HostErrors.h"
#include "simulator/host/model/ModelProperties.h"

namespace simulator {

namespace {

constexpr DescriptorEnumID kEnumFirst = fourCharCode("Frst");
constexpr DescriptorEnumID kEnumLast = fourCharCode("Lst ");
constexpr DescriptorEnumID kEnumFront = fourCharCode("Frnt");
constexpr DescriptorEnumID kEnumBack = fourCharCode("Back");
constexpr DescriptorEnumID kEnumNext = fourCharCode("Nxt ");
constexpr DescriptorEnumID kEnumPrevious = fourCharCode("Prvs");

/// One object of the model and the objects that contain it.
struct Target {
  DescriptorClassID kind = kClassApplication;
  std::size_t index = 0;
  std::size_t count = 1;
  const Document* document = nullptr;
  const Layer* layer = nullptr;
  const ActionSet* set = nullptr;
  const Action* action = nullptr;
};

/// The objects of one class that another object contains.
struct Elements {
  std::vector<Target> targets;
  std::vector<std::uint32_t> ids;
  std::vector<std::string> names;
  std::size_t current = 0;

  void add(Target target, std::uint32_t id, std::string name) {
    target.index = targets.size();
    targets.push_back(target);
    ids.push_back(id);
    names.push_back(std::move(name));
  }
};

const Document& documentOf(const Model& model, const Target& context) {
  if (context.document) return *context.document;
  if (model.currentDocument >= model.documents.size()) throw CallError{kNoSuchObject};
  return model.documents[model.currentDocument];
}

Elements documents(const Model& model) {
  Elements elements;
  for (const Document& document : model.documents) {
    elements.add({.kind = kClassDocument, .document = &document}, document.id, document.name);
  }
  elements.current = model.currentDocument;
  return elements;
}

Elements layers(const Document& document) {
  Elements elements;
  for (const Layer& layer : document.layers) {
    elements.add({.kind = kClassLayer, .document = &document, .layer = &layer}, layer.id,
                 layer.name);
  }
  elements.current = document.currentLayer;
  return elements;
}

Elements backgroundLayer(const Document& document) {
  Elements all = layers(document);
  Elements elements;
  for (std::size_t i = 0; i < all.targets.size(); ++i) {
    if (all.targets[i].layer->background) elements.add(all.targets[i], all.ids[i], all.names[i]);
  }
  return elements;
}

Elements history(const Document& document) {
  Elements elements;
  for (const std::string& state : document.history) {
    const auto id = static_cast<std::uint32_t>(elements.targets.size() + 1);
    elements.add({.kind = kClassHistoryState, .document = &document}, id, state);
  }
  elements.current = document.history.size() - 1;
  return elements;
}

Elements actionSets(const Model& model) {
  Elements elements;
  for (const ActionSet& set : model.actionSets) {
    elements.add({.kind = kClassActionSet, .set = &set}, set.id, set.name);
  }
  return elements;
}

Elements actions(const ActionSet& set) {
  Elements elements;
  for (const Action& action : set.actions) {
    elements.add({.kind = kClassAction, .set = &set, .action = &action}, action.id, action.name);
  }
  return elements;
}

Elements only(DescriptorClassID kind) {
  Elements elements;
  elements.add({.kind = kind}, 1, "");
  return elements;
}

const ActionSet& setOf(const Model& model, const Target& context) {
  if (context.set) return *context.set;
  if (model.actionSets.empty()) throw CallError{kNoSuchObject};
  return model.actionSets.front();
}

Elements elementsOf(const Model& model, const Target& context, DescriptorClassID kind) {
  switch (kind) {
    case kClassApplication:
      return only(kind);
    case kClassDocument:
      return documents(model);
    case kClassLayer:
      return layers(documentOf(model, context));
    case kClassBackgroundLayer:
      return backgroundLayer(documentOf(model, context));
    case kClassHistoryState:
      return history(documentOf(model, context));
    case kClassActionSet:
      return actionSets(model);
    case kClassAction:
      return actions(setOf(model, context));
    case kClassBrush:
      return model.brush ? only(kind) : Elements{};
    default:
      throw CallError{kNoSuchObject};
  }
}

/// The index that an ordinal names; beyond the end if there is no such element.
std::size_t ordinalPlace(const Elements& elements, DescriptorEnumID ordinal) {
  switch (ordinal) {
    case kEnumTarget:
      return elements.current;
    case kEnumFirst:
    case kEnumBack:
      return 0;
    case kEnumLast:
    case kEnumFront:
      return elements.targets.size() - 1;
    case kEnumNext:
      return elements.current + 1;
    case kEnumPrevious:
      return elements.current - 1;
    default:
      throw CallError{kNoSuchObject};
  }
}

template <class T>
std::size_t placeOf(const std::vector<T>& values, const T& wanted) {
  return static_cast<std::size_t>(std::find(values.begin(), values.end(), wanted) - values.begin());
}

/// The index in `elements` that a form names; beyond the end if there is no such element. Forms
/// count indexes from 1, so 0 wraps around to the largest value.
std::size_t placeOf(const Elements& elements, const Form& form) {
  switch (form.form) {
    case kFormClass:
      return elements.current;
    case kFormEnumerated:
      return ordinalPlace(elements, form.value);
    case kFormIndex:
      return std::size_t{form.value} - 1;
    case kFormIdentifier:
      return placeOf(elements.ids, form.value);
    case kFormName:
      return placeOf(elements.names, form.name);
    case kFormOffset:
      return elements.current + static_cast<std::size_t>(static_cast<std::int32_t>(form.value));
    default:
      throw CallError{kNoSuchObject};
  }
}

Target select(const Model& model, const Target& context, const Form& form) {
  Elements elements = elementsOf(model, context, form.desiredClass);
  const std::size_t place = placeOf(elements, form);
  if (place >= elements.targets.size()) throw CallError{kNoSuchObject};
  elements.targets[place].count = elements.targets.size();
  return elements.targets[place];
}

/// Follows the forms from the outermost object inward, that is, from the last form to the first.
Target resolve(const Model& model, Forms forms) {
  Target target;
  for (auto form = forms.rbegin(); form != forms.rend(); ++form) {
    target = select(model, target, *form);
  }
  return target;
}

Container propertiesOf(const Model& model, const Target& target, TypeIds& ids) {
  switch (target.kind) {
    case kClassDocument:
      return documentProperties(*target.document, target.index, target.count, ids);
    case kClassLayer:
      return layerProperties(*target.layer, target.index, target.count, *target.document);
    case kClassHistoryState:
      return historyProperties(target.document->history[target.index], target.index, target.count);
    case kClassActionSet:
      return actionSetProperties(*target.set, target.index, target.count);
    case kClassAction:
      return actionProperties(*target.action, target.index, target.count, *target.set);
    case kClassBrush:
      return brushProperties(*model.brush);
    default:
      return applicationProperties(model, ids);
  }
}

bool asksForProperty(Forms reference) {
  return !reference.empty() && reference.front().form == kFormProperty;
}

/// The object whose property the reference asks for: for the class 'Prpr' what the other forms
/// name, for any other class the current object of that class inside it.
Target ownerOfProperty(const Model& model, Forms reference) {
  const Target context = resolve(model, reference.subspan(1));
  const DescriptorClassID kind = reference.front().desiredClass;
  if (kind == kClassProperty) return context;
  return select(model, context, {.form = kFormClass, .desiredClass = kind});
}

/// Only the property asked for. An answer with the tool also has the tool's options.
ContainerPtr answerWith(const Container& properties, DescriptorKeyID key) {
  auto answer = std::make_shared<Container>();
  for (const Entry& entry : properties.entries) {
    const bool options = key == kKeyTool && entry.key == kKeyCurrentToolOptions;
    if (entry.key == key || options) answer->entries.push_back(entry);
  }
  return answer;
}

}  // namespace

ContainerPtr answerGet(const Model& model, Forms reference, TypeIds& ids) {
  if (!asksForProperty(reference)) {
    return std::make_shared<Container>(propertiesOf(model, resolve(model, reference), ids));
  }
  const DescriptorKeyID key = reference.front().value;
  const Target owner = ownerOfProperty(model, reference);
  ContainerPtr answer = answerWith(propertiesOf(model, owner, ids), key);
  const bool toolWithoutName = key == kKeyTool && owner.kind == kClassApplication;
  if (answer->entries.empty() && !toolWithoutName) throw CallError{errMissingParameter};
  return answer;
}

ActionInSet namedAction(const Model& model, Forms reference) {
  const Target target = resolve(model, reference);
  if (target.action == nullptr) throw CallError{kNoSuchObject};
  return {*target.set, *target.action};
}

}  // namespace simulator
