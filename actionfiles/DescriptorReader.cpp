#include "actionfiles/DescriptorReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "actionfiles/ActionFile.h"
#include "actionfiles/ByteInput.h"
#include "actionfiles/TextDecoding.h"

namespace actionfiles {

namespace {

// The fewest bytes that each of these takes.
constexpr std::size_t kLeastId = 8;
constexpr std::size_t kLeastClass = 4 + kLeastId;
constexpr std::size_t kLeastValue = 5;
constexpr std::size_t kLeastItem = kLeastId + kLeastValue;
constexpr std::size_t kLeastForm = 4 + kLeastClass;
constexpr std::size_t kLeastColumn = kLeastId + 12;
constexpr std::size_t kUnitSize = 2;
constexpr std::size_t kFloatSize = 8;

/// Room for the first things of a sequence, so that a short one is not moved as it grows. More room
/// is made only as things arrive.
template <class T>
void makeRoom(std::vector<T>& things, std::uint32_t count) {
  constexpr std::uint32_t kMost = 16;
  things.reserve(std::min(count, kMost));
}

}  // namespace

void DescriptorReader::text(Text& text) {
  const std::size_t count = in_.count(kUnitSize, "a number of UTF-16 units");
  decodeUtf16(in_.view(count * kUnitSize, buffer_, "the rest of a Unicode text"), text);
}

void DescriptorReader::id(Id& id) {
  const std::uint32_t length = in_.count(1, "the length of a string ID");
  if (length == 0) {
    id = Id(in_.u32("a four-character code"));
  } else {
    id = Id(in_.view(length, buffer_, "the rest of a string ID"));
  }
}

void DescriptorReader::className(ClassName& name) {
  text(name.name);
  id(name.id);
}

void DescriptorReader::enumerated(Enumerated& enumerated) {
  id(enumerated.type);
  id(enumerated.value);
}

void DescriptorReader::descriptor(Descriptor& descriptor) {
  open_.clear();
  openDescriptor(descriptor);
  while (!open_.empty()) next();
}

void DescriptorReader::openDescriptor(Descriptor& descriptor) {
  className(descriptor.type);
  const std::uint32_t count = in_.count(kLeastItem, "a number of items");
  makeRoom(descriptor.items, count);
  open({&descriptor.items, nullptr, count});
}

void DescriptorReader::openList(List& list) {
  const std::uint32_t count = in_.count(kLeastValue, "a number of items");
  makeRoom(list.values, count);
  open({nullptr, &list.values, count});
}

void DescriptorReader::open(const Open& container) {
  if (open_.size() == kDeepestNesting) {
    in_.fail(in_.offset(), "nesting of at most " + std::to_string(kDeepestNesting) + " levels",
             "one more");
  }
  open_.push_back(container);
}

/// Reads one item of the innermost container, which may open another one. Addresses stay valid: a
/// container gets no further item while one that lies in it is open.
void DescriptorReader::next() {
  Open& container = open_.back();
  if (container.left == 0) {
    open_.pop_back();
    return;
  }
  --container.left;
  if (container.values != nullptr) return value(container.values->emplace_back());
  Item& item = container.items->emplace_back();
  id(item.key);
  value(item.value);
}

void DescriptorReader::value(Value& value) {
  const std::uint64_t offset = in_.offset();
  value.type = in_.u32("an item type");
  auto& content = value.content;
  switch (value.type) {
    case kInteger:
      content = in_.i32("an integer");
      break;
    case kLargeInteger:
      content = in_.i64("an integer of 64 bits");
      break;
    case kFloat:
      content = in_.f64("a floating-point number");
      break;
    case kBoolean:
      content = in_.flag("a Boolean");
      break;
    case kUnitFloat: {
      const std::uint32_t unit = in_.u32("a unit");
      content = UnitFloat{unit, in_.f64("a floating-point number")};
      break;
    }
    case kEnumerated:
      enumerated(content.emplace<Enumerated>());
      break;
    case kClass:
    case kGlobalClass:
      className(*content.emplace<Boxed<ClassName>>());
      break;
    case kObject:
    case kGlobalObject:
      openDescriptor(*content.emplace<Boxed<Descriptor>>());
      break;
    case kList:
      openList(content.emplace<List>());
      break;
    case kReference:
      reference(content.emplace<Reference>());
      break;
    case kText:
      text(*content.emplace<Boxed<Text>>());
      break;
    case kRawData:
    case kAlias:
    case kPath:
    case kBookmark:
      data(content.emplace<Data>().bytes);
      break;
    case kUnitFloats:
      unitFloats(content.emplace<UnitFloats>());
      break;
    case kObjectArray:
      objectArray(*content.emplace<Boxed<ObjectArray>>());
      break;
    default:
      in_.fail(offset, "an item type", quotedCode(value.type));
  }
}

void DescriptorReader::reference(Reference& reference) {
  const std::uint32_t count = in_.count(kLeastForm, "a number of forms");
  makeRoom(reference, count);
  for (std::uint32_t i = 0; i < count; ++i) form(reference.emplace_back());
}

void DescriptorReader::form(Form& form) {
  const std::uint64_t offset = in_.offset();
  form.form = in_.u32("a form of a reference");
  className(form.desiredClass);
  switch (form.form) {
    case kClassForm:
      break;
    case kPropertyForm:
      id(form.value.emplace<Id>());
      break;
    case kEnumeratedForm:
      enumerated(form.value.emplace<Enumerated>());
      break;
    case kOffsetForm:
      form.value = in_.i32("an offset");
      break;
    case kIdentifierForm:
      form.value = in_.u32("an identifier");
      break;
    case kIndexForm:
      form.value = in_.u32("an index");
      break;
    case kNameForm:
      text(*form.value.emplace<Boxed<Text>>());
      break;
    default:
      in_.fail(offset, "a form of a reference", quotedCode(form.form));
  }
}

void DescriptorReader::data(std::string& bytes) {
  const std::size_t length = in_.count(1, "a length of data");
  in_.bytes(length, bytes, "the rest of the data");
}

void DescriptorReader::unitFloats(UnitFloats& floats) {
  floats.unit = in_.u32("a unit");
  const std::uint32_t count = in_.count(kFloatSize, "a number of floating-point numbers");
  for (std::uint32_t i = 0; i < count; ++i) {
    floats.values.push_back(in_.f64("a floating-point number"));
  }
}

void DescriptorReader::objectArray(ObjectArray& array) {
  array.count = in_.u32("a number of objects");
  className(array.type);
  const std::uint32_t count = in_.count(kLeastColumn, "a number of keys");
  for (std::uint32_t i = 0; i < count; ++i) column(array.columns.emplace_back());
}

void DescriptorReader::column(ObjectArray::Column& column) {
  id(column.key);
  const std::uint64_t offset = in_.offset();
  const std::uint32_t type = in_.u32("the type 'UnFl'");
  if (type != kUnitFloats) in_.fail(offset, "the type 'UnFl'", quotedCode(type));
  unitFloats(column.values);
}

}  // namespace actionfiles
