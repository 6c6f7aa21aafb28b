#include "tests/actionfiles/ActionFileWriter.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <stdexcept>
#include <utility>

#include "actionfiles/ActionFileReader.h"
#include "actionfiles/TextDecoding.h"

namespace testing_support {

using namespace actionfiles;

namespace {

/// The UTF-16 units of well-formed UTF-8.
std::u16string unitsOf(std::string_view utf8) {
  std::u16string units;
  for (std::size_t i = 0; i < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t c = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t k = 1; k < length; ++k) c = (c << 6) | (utf8[i + k] & 0x3F);
    if (c < 0x10000) {
      units += static_cast<char16_t>(c);
    } else {
      units += static_cast<char16_t>(0xD7C0 + (c >> 10));
      units += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
    }
    i += length;
  }
  return units;
}

/// Mac Roman's byte for each character in UTF-8.
const std::map<std::string, char>& macRomanBytes() {
  static const auto bytes = [] {
    std::map<std::string, char> all;
    for (int byte = 0; byte < 256; ++byte) {
      const std::string one(1, static_cast<char>(byte));
      all.emplace(utf8FromMacRoman(one), one[0]);
    }
    return all;
  }();
  return bytes;
}

std::string macRoman(std::string_view utf8) {
  std::string bytes;
  std::string character;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    character += utf8[i];
    const bool last = i + 1 == utf8.size() || (utf8[i + 1] & 0xC0) != 0x80;
    if (!last) continue;
    bytes += macRomanBytes().at(std::exchange(character, {}));
  }
  return bytes;
}

class Writer {
 public:
  std::string bytes;

  void u8(unsigned value) { number(value, 1); }
  void u16(unsigned value) { number(value, 2); }
  void u32(std::uint64_t value) { number(value, 4); }
  void f64(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    number(bits, 8);
  }

  void data(std::string_view content) {
    u32(content.size());
    bytes += content;
  }

  void text(const Text& text) {
    std::u16string units = text.units ? *text.units : unitsOf(text.utf8);
    if (text.terminated) units += u'\0';
    u32(units.size());
    for (const char16_t unit : units) u16(unit);
  }

  void id(const Id& id) {
    data(id.string());
    if (!id.isString()) u32(id.code());
  }

  void className(const ClassName& name) {
    text(name.name);
    id(name.id);
  }

  void descriptor(const Descriptor& descriptor) {
    className(descriptor.type);
    u32(descriptor.items.size());
    for (const Item& item : descriptor.items) {
      id(item.key);
      value(item.value);
    }
  }

  void value(const Value& value) {
    u32(value.type);
    std::visit([this](const auto& content) { put(content); }, value.content);
  }

  void step(const Step& step) {
    u8(step.expanded);
    u8(step.enabled);
    u8(step.withDialog);
    u8(step.dialogOptions);
    if (step.event.isString()) {
      bytes += "TEXT";
      data(step.event.string());
    } else {
      bytes += "long";
      u32(step.event.code());
    }
    data(macRoman(step.name));
    u32(static_cast<std::uint32_t>(step.mark));
    if (step.mark != 0) descriptor(step.descriptor);
  }

  void action(const RecordedAction& action) {
    u16(action.head.functionKey);
    u8(action.head.shift);
    u8(action.head.command);
    u16(action.head.colour);
    text(action.head.name);
    u8(action.head.expanded);
    u32(action.steps.size());
    for (const Step& step : action.steps) this->step(step);
  }

 private:
  void number(std::uint64_t value, int size) {
    for (int i = size; i-- > 0;) bytes += static_cast<char>(value >> (8 * i));
  }

  void put(std::monostate) {}
  void put(std::int32_t value) { u32(static_cast<std::uint32_t>(value)); }
  void put(std::uint32_t value) { u32(value); }
  void put(std::int64_t value) { number(static_cast<std::uint64_t>(value), 8); }
  void put(double value) { f64(value); }
  void put(bool value) { u8(value); }
  void put(const UnitFloat& value) {
    u32(value.unit);
    f64(value.value);
  }
  void put(const Id& value) { id(value); }
  void put(const Enumerated& value) {
    id(value.type);
    id(value.value);
  }
  void put(const Boxed<ClassName>& value) { className(*value); }
  void put(const Boxed<Descriptor>& value) { descriptor(*value); }
  void put(const List& list) {
    u32(list.values.size());
    for (const Value& one : list.values) value(one);
  }
  void put(const Reference& reference) {
    u32(reference.size());
    for (const Form& form : reference) {
      u32(form.form);
      className(form.desiredClass);
      std::visit([this](const auto& content) { put(content); }, form.value);
    }
  }
  void put(const Boxed<Text>& value) { text(*value); }
  void put(const Data& value) { data(value.bytes); }
  void put(const UnitFloats& floats) {
    u32(floats.unit);
    u32(floats.values.size());
    for (const double value : floats.values) f64(value);
  }
  void put(const Boxed<ObjectArray>& array) {
    u32(array->count);
    className(array->type);
    u32(array->columns.size());
    for (const ObjectArray::Column& column : array->columns) {
      id(column.key);
      u32(kUnitFloats);
      put(column.values);
    }
  }
};
Reference everyForm() {
  Reference forms;
  const auto add = [&](std::uint32_t form, auto value) {
    forms.push_back({form, className(codeId("Lyr ")), std::move(value)});
  };
  add(kPropertyForm, codeId("fsel"));
  add(kPropertyForm, stringId("layerEffects"));
  add(kClassForm, std::monostate{});
  add(kEnumeratedForm, Enumerated{codeId("Ordn"), stringId("targetEnum")});
  add(kOffsetForm, std::int32_t{-3});
  add(kIdentifierForm, std::uint32_t{0xFFFFFFFF});
  add(kIndexForm, std::uint32_t{7});
  add(kNameForm, inBox(textOf(u"Ebene \u00E4 \U0001F600")));
  add(kNameForm, inBox(textOf({u"a\xD800z", 3})));
  add(kNameForm, Boxed<Text>());
  return forms;
}

ObjectArray objectArray() {
  ObjectArray array;
  array.count = 2;
  array.type = className(stringId("rationalPoint"));
  array.columns.push_back({codeId("Hrzn"), {fourCharCode("#Prc"), {0.5, -0.25}}});
  array.columns.push_back({stringId("vertical"), {fourCharCode("#Pxl"), {1e300, 0.0}}});
  return array;
}

}  // namespace

std::string written(const RecordedSet& set) {
  Writer writer;
  writer.u32(kVersion);
  writer.text(set.head.name);
  writer.u8(set.head.expanded);
  writer.u32(set.actions.size());
  for (const RecordedAction& action : set.actions) writer.action(action);
  return std::move(writer.bytes);
}

RecordedSet readAll(ByteSource& source) {
  ActionFileReader reader(source);
  RecordedSet set{reader.set(), {}};
  while (const ActionHead* action = reader.nextAction()) {
    set.actions.push_back({*action, {}});
    while (Step* step = reader.nextStep()) set.actions.back().steps.push_back(std::move(*step));
  }
  return set;
}

RecordedSet readAll(std::string_view bytes) {
  MemorySource source(bytes);
  return readAll(source);
}

Text textOf(std::u16string_view units) {
  std::string bytes;
  for (const char16_t unit : units) {
    bytes += {static_cast<char>(unit >> 8), static_cast<char>(unit)};
  }
  Text text;
  decodeUtf16(bytes + std::string(2, '\0'), text);
  return text;
}

Id stringId(std::string_view string) { return Id(string); }

Id codeId(const char (&code)[5]) { return Id(fourCharCode(code)); }

ClassName className(Id id) { return {textOf(u""), std::move(id)}; }

RecordedSet setOf(std::vector<Step> steps) {
  RecordedSet set;
  set.head.name = textOf(u"Set");
  set.actions.emplace_back();
  set.actions[0].head.name = textOf(u"Action");
  set.actions[0].steps = std::move(steps);
  return set;
}

Step stepOf(Id event, std::string name, std::vector<Item> items) {
  Step step;
  step.enabled = true;
  step.event = std::move(event);
  step.name = std::move(name);
  step.mark = -1;
  step.descriptor.type = className(codeId("null"));
  step.descriptor.items = std::move(items);
  return step;
}

Step stepWith(Value value) {
  std::vector<Item> items;
  items.push_back({codeId("Key "), std::move(value)});
  return stepOf(stringId("set"), "Set", std::move(items));
}

std::string pathBytes(std::string_view ascii) {
  std::string bytes = "txtu";
  const auto littleEndian = [&](std::size_t value) {
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(value >> (8 * i));
  };
  littleEndian(12 + 2 * ascii.size());
  littleEndian(ascii.size());
  for (const char c : ascii) bytes += {c, '\0'};
  return bytes;
}

std::string aliasRecord(std::string_view macRomanName) {
  std::string record(150, '\0');
  record[7] = 2;
  record[50] = static_cast<char>(macRomanName.size());
  return record.replace(51, macRomanName.size(), macRomanName);
}

std::vector<Value> everyType() {
  std::vector<Value> values;
  const auto add = [&](Value value) { values.push_back(std::move(value)); };
  add(valueOf(kInteger, std::numeric_limits<std::int32_t>::min()));
  add(valueOf(kLargeInteger, std::numeric_limits<std::int64_t>::min() + 1));
  add(valueOf(kFloat, -0.0));
  add(valueOf(kBoolean, true));
  add(valueOf(kBoolean, false));
  add(valueOf(kUnitFloat, UnitFloat{fourCharCode("#Pxl"), 13.5}));
  add(valueOf(kEnumerated, Enumerated{stringId("antiAliasType"), codeId("Anno")}));
  add(boxed(kText, textOf({u"\u00FC \"quoted\"\r\U0001F3A8\0 end", 18})));
  add(boxed(kText, textOf(u"")));
  add(boxed(kText, Text{}));
  add(boxed(kText, textOf({u"\xDC00 and \xD800", 7})));
  add(boxed(kClass, className(codeId("Lyr "))));
  add(boxed(kGlobalClass, ClassName{textOf(u"Ebene"), stringId("layer")}));
  Descriptor inner;
  inner.type = className(stringId("point"));
  inner.items.push_back({codeId("Hrzn"), valueOf(kFloat, 1.5)});
  add(boxed(kObject, std::move(inner)));
  add(boxed(kGlobalObject, Descriptor{className(codeId("\x01\x02\xFE\xFF")), {}}));
  List list;
  list.values.push_back(valueOf(kInteger, std::int32_t{1}));
  list.values.push_back(valueOf(kList, List{}));
  add(valueOf(kList, std::move(list)));
  add(valueOf(kReference, everyForm()));
  add(valueOf(kReference, Reference{}));
  add(valueOf(kRawData, Data{std::string("\0\xFF raw", 6)}));
  add(valueOf(kRawData, Data{}));
  add(valueOf(kAlias, Data{aliasRecord("a\x8A.psd")}));
  add(valueOf(kPath, Data{pathBytes("/Users/a/b.psd")}));
  add(valueOf(kBookmark, Data{"book and more"}));
  add(valueOf(kUnitFloats, UnitFloats{fourCharCode("#Ang"), {1, 2, 3}}));
  add(boxed(kObjectArray, objectArray()));
  return values;
}

}  // namespace testing_support
