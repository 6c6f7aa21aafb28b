#include <string>
#include <utility>
#include <vector>

#include "simulator/base/Text.h"
#include "simulator/host/json/Base64.h"
#include "simulator/host/json/DescriptorJson.h"

namespace simulator {

namespace {

Json formToJson(const Form& form, const TypeIds& ids) {
  Json json = {{"form", idText(form.form)}, {"class", idToJson(form.desiredClass, ids)}};
  switch (form.form) {
    case kFormEnumerated:
      json["enumType"] = idToJson(form.enumType, ids);
      json["value"] = idToJson(form.value, ids);
      break;
    case kFormIdentifier:
    case kFormIndex:
      json["value"] = form.value;
      break;
    case kFormOffset:
      json["value"] = static_cast<std::int32_t>(form.value);
      break;
    case kFormProperty:
      json["key"] = idToJson(form.value, ids);
      break;
    case kFormName:
      json["value"] = wellFormed(form.name);
      break;
    default:
      break;
  }
  return json;
}

/// Writes the fields of an item's value. A nested container is written as null and filled in later.
struct ValueWriter {
  Json& json;
  const TypeIds& ids;

  void operator()(std::monostate) const {}
  void operator()(std::int32_t value) const { json["value"] = value; }
  void operator()(std::int64_t value) const { json["value"] = value; }
  void operator()(double value) const { json["value"] = value; }
  void operator()(bool value) const { json["value"] = value; }
  void operator()(const UnitFloat& value) const {
    json["unit"] = idToJson(value.unit, ids);
    json["value"] = value.value;
  }
  void operator()(const Enumerated& value) const {
    json["enumType"] = idToJson(value.type, ids);
    json["value"] = idToJson(value.value, ids);
  }
  void operator()(ClassID value) const { json["value"] = idToJson(value.id, ids); }
  void operator()(const Object& value) const {
    json["class"] = idToJson(value.type, ids);
    json["value"] = nullptr;
  }
  void operator()(const List&) const { json["value"] = nullptr; }
  void operator()(const Reference& value) const { json["value"] = referenceToJson(value, ids); }
  void operator()(const Text& value) const { json["value"] = wellFormed(value.utf8); }
  void operator()(const FilePath& value) const { json["value"] = wellFormed(value.path); }
  void operator()(const Data& value) const { json["value"] = base64(value.bytes); }
};

struct Pending {
  const Container* container;
  bool keyed;
  Json* destination;
};

Json entryToJson(const Entry& entry, bool keyed, const TypeIds& ids) {
  Json json = Json::object();
  if (keyed) json["key"] = idToJson(entry.key, ids);
  json["type"] = idText(entry.item.type);
  std::visit(ValueWriter{json, ids}, entry.item.value);
  return json;
}

// Completes the array before taking the addresses of its elements, which growing would move.
void writeEntries(const Pending& work, const TypeIds& ids, std::vector<Pending>& open) {
  Json& array = *work.destination;
  array = Json::array();
  for (const Entry& entry : work.container->entries) {
    array.push_back(entryToJson(entry, work.keyed, ids));
  }
  for (std::size_t i = 0; i < array.size(); ++i) {
    const Item& item = work.container->entries[i].item;
    const NestedContainer* inner = nested(item);
    if (inner == nullptr) continue;
    const bool keyed = std::holds_alternative<Object>(item.value);
    open.push_back({inner->get(), keyed, &array[i]["value"]});
  }
}

Json containerToJson(const Container& container, bool keyed, const TypeIds& ids) {
  Json root;
  std::vector<Pending> open = {{&container, keyed, &root}};
  while (!open.empty()) {
    const Pending work = open.back();
    open.pop_back();
    writeEntries(work, ids, open);
  }
  return root;
}

}  // namespace

Json descriptorToJson(const Container& descriptor, const TypeIds& ids) {
  return containerToJson(descriptor, true, ids);
}

Json listToJson(const Container& list, const TypeIds& ids) {
  return containerToJson(list, false, ids);
}

Json referenceToJson(Forms reference, const TypeIds& ids) {
  Json json = Json::array();
  for (const Form& form : reference) json.push_back(formToJson(form, ids));
  return json;
}

Json idToJson(std::uint32_t id, const TypeIds& ids) {
  const std::string* string = ids.stringOf(id);
  // JSON cannot hold other bytes, and "$" alone is not an ID.
  if (string && !string->empty() && isUtf8(*string)) return "$" + *string;
  std::string text = idText(id);
  const bool readsBack = text.size() == 4 && !text.starts_with('$');
  return readsBack ? Json(std::move(text)) : Json(id);
}

}  // namespace simulator
