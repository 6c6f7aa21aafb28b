#include <fmt/format.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "simulator/host/json/Base64.h"
#include "simulator/host/json/DescriptorJson.h"
#include "simulator/host/json/JsonFields.h"

namespace simulator {

DescriptorJsonError::DescriptorJsonError(std::string place, std::string reason)
    : std::runtime_error(place + ": " + reason),
      place_(std::move(place)),
      reason_(std::move(reason)) {}

namespace {

/// A container that is being read. The frames of all enclosing containers give its place.
struct Frame {
  const Json* json;
  Container* container;
  bool keyed;
  std::size_t next = 0;
};

class ContainerReader {
 public:
  explicit ContainerReader(TypeIds& ids) : ids_(ids) {}

  ContainerPtr read(const Json& json, bool keyed);

 private:
  NestedContainer open(const Json& json, bool keyed);
  void readEntry(std::size_t frame);
  DescriptorKeyID readKey(const JsonFields& fields, const Container& container);
  Value readValue(const JsonFields& fields, DescriptorTypeID type);
  Value readObject(const JsonFields& fields);
  Value readReference(const JsonFields& fields);
  std::string place() const;

  TypeIds& ids_;
  std::vector<Frame> frames_;
};

ContainerPtr ContainerReader::read(const Json& json, bool keyed) {
  ContainerPtr root = std::make_shared<Container>();
  if (!json.is_array()) throw JsonFault{"", "must be a list of items"};
  frames_.push_back({&json, root.get(), keyed});
  while (!frames_.empty()) {
    if (frames_.back().next == frames_.back().json->size()) {
      frames_.pop_back();
    } else {
      readEntry(frames_.size() - 1);
    }
  }
  return root;
}

// Prefixes an entry's fault with the place of the entry, which the open frames give.
void ContainerReader::readEntry(std::size_t frame) {
  const Frame current = frames_[frame];
  const std::size_t index = frames_[frame].next++;
  try {
    const JsonFields fields((*current.json)[index], ids_);
    const DescriptorKeyID key = current.keyed ? readKey(fields, *current.container) : 0;
    const DescriptorTypeID type = fields.code("type");
    current.container->entries.push_back({key, {type, {}}});
    current.container->entries.back().item.value = readValue(fields, type);
    fields.expectNoMore();
  } catch (JsonFault& fault) {
    frames_.erase(frames_.begin() + static_cast<std::ptrdiff_t>(frame) + 1, frames_.end());
    throw JsonFault{place() + fault.place, fault.reason};
  }
}

std::string ContainerReader::place() const {
  std::string text;
  for (const Frame& frame : frames_) {
    if (!text.empty()) text += "/value";
    text += fmt::format("/{}", frame.next - 1);
  }
  return text;
}

DescriptorKeyID ContainerReader::readKey(const JsonFields& fields, const Container& container) {
  const DescriptorKeyID key = fields.id("key");
  if (container.find(key)) throw JsonFault{"/key", "occurs twice"};
  return key;
}

NestedContainer ContainerReader::open(const Json& json, bool keyed) {
  if (!json.is_array()) throw JsonFault{"/value", "must be a list of items"};
  auto container = std::make_shared<Container>();
  frames_.push_back({&json, container.get(), keyed});
  return container;
}

Value ContainerReader::readObject(const JsonFields& fields) {
  const DescriptorClassID type = fields.id("class");
  return Object{type, open(fields.at("value"), true)};
}

Value ContainerReader::readReference(const JsonFields& fields) {
  try {
    return referenceFromJson(fields.at("value"), ids_);
  } catch (const DescriptorJsonError& error) {
    throw JsonFault{"/value" + error.place(), error.reason()};
  }
}

Value readUnitFloat(const JsonFields& fields) {
  const DescriptorUnitID unit = fields.id("unit");
  return UnitFloat{unit, fields.number("value")};
}

Value readEnumerated(const JsonFields& fields) {
  const DescriptorEnumTypeID type = fields.id("enumType");
  return Enumerated{type, fields.id("value")};
}

Value readData(const JsonFields& fields) {
  auto bytes = fromBase64(fields.text("value"));
  if (!bytes) throw JsonFault{"/value", "is not base64"};
  return Data{std::move(*bytes)};
}

Value ContainerReader::readValue(const JsonFields& fields, DescriptorTypeID type) {
  switch (type) {
    case kTypeInteger:
      return fields.integer<std::int32_t>("value");
    case kTypeInteger64:
      return fields.integer<std::int64_t>("value");
    case kTypeFloat:
      return fields.number("value");
    case kTypeUnitFloat:
      return readUnitFloat(fields);
    case kTypeBoolean:
      return fields.boolean("value");
    case kTypeEnumerated:
      return readEnumerated(fields);
    case kTypeClass:
    case kTypeGlobalClass:
      return ClassID{fields.id("value")};
    case kTypeObject:
    case kTypeGlobalObject:
      return readObject(fields);
    case kTypeValueList:
      return List{open(fields.at("value"), false)};
    case kTypeObjectReference:
      return readReference(fields);
    case kTypeAlias:
    case kTypePath:
    case kTypeBookmark:
      return FilePath{fields.text("value")};
    case kTypeText:
      return Text{fields.text("value")};
    case kTypeRawData:
      return readData(fields);
    default:
      return std::monostate{};
  }
}

Form readForm(const Json& json, TypeIds& ids) {
  const JsonFields fields(json, ids);
  Form form = {.form = fields.code("form"), .desiredClass = fields.id("class")};
  switch (form.form) {
    case kFormClass:
      break;
    case kFormEnumerated:
      form.enumType = fields.id("enumType");
      form.value = fields.id("value");
      break;
    case kFormIdentifier:
    case kFormIndex:
      form.value = fields.integer<std::uint32_t>("value");
      break;
    case kFormOffset:
      form.value = static_cast<std::uint32_t>(fields.integer<std::int32_t>("value"));
      break;
    case kFormProperty:
      form.value = fields.id("key");
      break;
    case kFormName:
      form.name = fields.text("value");
      break;
    default:
      throw JsonFault{
          "/form",
          "is not a form of a reference; allowed: Clss, Enmr, Idnt, indx, rele, prop, name"};
  }
  fields.expectNoMore();
  return form;
}

Reference readForms(const Json& json, TypeIds& ids) {
  if (!json.is_array()) throw JsonFault{"", "must be a list of forms"};
  Reference forms;
  for (std::size_t i = 0; i < json.size(); ++i) {
    try {
      forms.push_back(readForm(json[i], ids));
    } catch (const JsonFault& fault) {
      throw JsonFault{fmt::format("/{}{}", i, fault.place), fault.reason};
    }
  }
  return forms;
}

template <class Read>
auto reading(Read&& read) {
  try {
    return read();
  } catch (const JsonFault& fault) {
    throw DescriptorJsonError(fault.place, fault.reason);
  }
}

}  // namespace

ContainerPtr descriptorFromJson(const Json& json, TypeIds& ids) {
  if (json.is_null()) return nullptr;
  return reading([&] { return ContainerReader(ids).read(json, true); });
}

ContainerPtr listFromJson(const Json& json, TypeIds& ids) {
  return reading([&] { return ContainerReader(ids).read(json, false); });
}

Reference referenceFromJson(const Json& json, TypeIds& ids) {
  return reading([&] { return readForms(json, ids); });
}

std::uint32_t idFromJson(const Json& json, TypeIds& ids) {
  return reading([&] { return readId(json, ids); });
}

}  // namespace simulator
