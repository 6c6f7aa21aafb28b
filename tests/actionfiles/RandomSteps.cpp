#include "tests/actionfiles/RandomSteps.h"

#include <cstring>
#include <string>
#include <utility>

#include "actionfiles/TextDecoding.h"

namespace testing_support {

using namespace actionfiles;

Id RandomSteps::id() {
  if (oneIn(2)) return Id(static_cast<std::uint32_t>(random_()));
  // Mostly short ones; some are longer than a reader's buffer.
  const std::uint32_t most = oneIn(500) ? 70000 : 30;
  std::string string(1 + below(most), 'a');
  for (char& c : string) c = static_cast<char>('a' + below(26));
  return Id(string);
}

Text RandomSteps::text() {
  std::u16string units(below(20), u'a');
  for (char16_t& unit : units) {
    unit = static_cast<char16_t>(oneIn(3) ? random_() : 0x20 + below(0x60));
  }
  if (oneIn(5)) units += u"\U0001F5BC";
  Text made = textOf(units);
  // Without its terminator, a text may end with another 0.
  if (oneIn(5) && (units.empty() || units.back() != 0)) made.terminated = false;
  return made;
}

ClassName RandomSteps::type() { return {oneIn(4) ? text() : textOf(u""), id()}; }

/// Any bits: also infinities and NaNs of any payload.
double RandomSteps::number() {
  const std::uint64_t bits = (std::uint64_t{random_()} << 32) | random_();
  double value = 0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

std::string RandomSteps::bytes(std::uint32_t most) {
  std::string made(below(most), '\0');
  for (char& c : made) c = static_cast<char>(random_());
  return made;
}

UnitFloats RandomSteps::floats() {
  UnitFloats made{static_cast<std::uint32_t>(random_()), {}};
  made.values.resize(below(6));
  for (double& value : made.values) value = number();
  return made;
}

Reference RandomSteps::reference() {
  Reference made(below(4));
  for (Form& form : made) {
    form.desiredClass = type();
    switch (below(7)) {
      case 0:
        form.form = kClassForm;
        break;
      case 1:
        form.form = kPropertyForm;
        form.value = id();
        break;
      case 2:
        form.form = kEnumeratedForm;
        form.value = Enumerated{id(), id()};
        break;
      case 3:
        form.form = kOffsetForm;
        form.value = static_cast<std::int32_t>(random_());
        break;
      case 4:
        form.form = kIdentifierForm;
        form.value = static_cast<std::uint32_t>(random_());
        break;
      case 5:
        form.form = kIndexForm;
        form.value = static_cast<std::uint32_t>(random_());
        break;
      default:
        form.form = kNameForm;
        form.value = inBox(text());
    }
  }
  return made;
}

Descriptor RandomSteps::descriptor(int level) {
  Descriptor made{type(), {}};
  const std::uint32_t count = below(6);
  for (std::uint32_t i = 0; i < count; ++i) {
    Id key = id();
    made.items.push_back({std::move(key), value(level)});
  }
  return made;
}

Value RandomSteps::value(int level) {
  if (level >= deepest_ || !oneIn(4)) return file_.empty() ? leaf() : leafOfAHost();
  if (oneIn(2)) {
    List list;
    const std::uint32_t count = below(5);
    for (std::uint32_t i = 0; i < count; ++i) list.values.push_back(value(level + 1));
    return valueOf(kList, std::move(list));
  }
  const std::uint32_t type = oneIn(2) ? kObject : kGlobalObject;
  return boxed(type, descriptor(level + 1));
}

Value RandomSteps::leaf() {
  switch (below(16)) {
    case 0:
      return valueOf(kInteger, static_cast<std::int32_t>(random_()));
    case 1:
      return valueOf(kLargeInteger, static_cast<std::int64_t>(std::uint64_t{random_()} << 31));
    case 2:
      return valueOf(kFloat, number());
    case 3:
      return valueOf(kBoolean, oneIn(2));
    case 4:
      return valueOf(kUnitFloat, UnitFloat{static_cast<std::uint32_t>(random_()), number()});
    case 5:
      return valueOf(kEnumerated, Enumerated{id(), id()});
    case 6:
      return boxed(kClass, type());
    case 7:
      return boxed(kGlobalClass, type());
    case 8:
      return valueOf(kReference, reference());
    case 9:
      return valueOf(kRawData, Data{bytes(oneIn(50) ? 100000 : 40)});
    case 10:
      return valueOf(kAlias, Data{bytes(200)});
    case 11:
      return valueOf(kPath, Data{bytes(40)});
    case 12:
      return valueOf(kBookmark, Data{bytes(40)});
    case 13:
      return valueOf(kUnitFloats, floats());
    case 14: {
      ObjectArray array;
      array.count = static_cast<std::uint32_t>(random_());
      array.type = type();
      array.columns.resize(below(4));
      for (ObjectArray::Column& column : array.columns) column = {id(), floats()};
      return boxed(kObjectArray, std::move(array));
    }
    default:
      return boxed(kText, text());
  }
}

Value RandomSteps::leafOfAHost() {
  for (;;) {
    Value value = leaf();
    switch (value.type) {
      case kAlias:
        return valueOf(kAlias, Data{aliasRecord("random.psd") + bytes(100)});
      case kPath:
        return valueOf(kPath, Data{pathBytes(file_)});
      case kBookmark:
        return valueOf(kBookmark, Data{"book" + bytes(100)});
      case kUnitFloats:
      case kObjectArray:
        continue;
      default:
        return value;
    }
  }
}

Step RandomSteps::step() {
  Step made;
  made.expanded = oneIn(2);
  made.enabled = !oneIn(4);
  made.withDialog = oneIn(2);
  made.dialogOptions = static_cast<std::uint8_t>(random_());
  made.event = id();
  made.name = utf8FromMacRoman(bytes(30));
  if (oneIn(5)) return made;
  made.mark = oneIn(2) ? -1 : 1;
  made.descriptor = descriptor(0);
  return made;
}

RecordedSet RandomSteps::set(std::size_t count) {
  RecordedSet made;
  made.head.name = text();
  made.head.expanded = oneIn(2);
  while (count > 0) {
    RecordedAction& action = made.actions.emplace_back();
    action.head.functionKey = static_cast<std::uint16_t>(random_());
    action.head.shift = oneIn(2);
    action.head.command = oneIn(2);
    action.head.colour = static_cast<std::uint16_t>(random_());
    action.head.name = text();
    action.head.expanded = oneIn(2);
    for (std::uint32_t i = below(8); i > 0 && count > 0; --i, --count) {
      action.steps.push_back(step());
    }
  }
  return made;
}

}  // namespace testing_support
