#include "tests/codegen/RandomDescriptor.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <utility>

#include "codegen/Terminology.h"

using namespace simulator;

ContainerPtr RandomDescriptor::make() {
  hasAlias_ = false;
  hasBookmark_ = false;
  return container(0, true);
}

ContainerPtr RandomDescriptor::container(int depth, bool keyed) {
  auto made = std::make_shared<Container>();
  for (std::uint32_t count = below(depth == 0 ? 24 : 6); count > 0; --count) {
    Item next = item(depth);
    if (keyed) {
      made->put(id(), std::move(next));
    } else {
      made->entries.push_back({0, std::move(next)});
    }
  }
  return made;
}

Item RandomDescriptor::item(int depth) {
  constexpr int kDeepest = 4;
  if (depth == kDeepest) return leaf();
  switch (below(16)) {
    case 0:
      return {kTypeObject, Object{id(), container(depth + 1, true)}};
    case 1:
      return {kTypeGlobalObject, Object{id(), container(depth + 1, true)}};
    case 2:
      return {kTypeValueList, List{container(depth + 1, false)}};
    case 3:
      return fileItem();
    default:
      return leaf();
  }
}

Item RandomDescriptor::leaf() {
  switch (below(11)) {
    case 0:
      return {kTypeInteger, static_cast<std::int32_t>(integer())};
    case 1:
      return {kTypeInteger64, integer()};
    case 2:
      return {kTypeFloat, number()};
    case 3:
      return {kTypeUnitFloat, UnitFloat{id(), number()}};
    case 4:
      return {kTypeBoolean, oneIn(2)};
    case 5:
      return {kTypeEnumerated, Enumerated{id(), id()}};
    case 6:
      return {kTypeClass, ClassID{id()}};
    case 7:
      return {kTypeGlobalClass, ClassID{id()}};
    case 8:
      return {kTypeObjectReference, reference()};
    case 9:
      return {kTypeText, Text{text()}};
    default:
      return {kTypeRawData, Data{std::string(below(300), 'd')}};
  }
}

Item RandomDescriptor::fileItem() {
  if (oneIn(2) && !std::exchange(hasBookmark_, true)) return {kTypeBookmark, FilePath{file_}};
  if (!std::exchange(hasAlias_, true)) return {oneIn(2) ? kTypeAlias : kTypePath, FilePath{file_}};
  return leaf();
}

Reference RandomDescriptor::reference() {
  Reference forms;
  for (std::uint32_t count = 1 + below(3); count > 0; --count) forms.push_back(form());
  return forms;
}

Form RandomDescriptor::form() {
  const DescriptorClassID desiredClass = id();
  const auto value = static_cast<std::uint32_t>(integer());
  switch (below(7)) {
    case 0:
      return {.form = kFormClass, .desiredClass = desiredClass};
    case 1:
      return {kFormEnumerated, desiredClass, id(), id()};
    case 2:
      return {.form = kFormIdentifier, .desiredClass = desiredClass, .value = value};
    case 3:
      return {.form = kFormProperty, .desiredClass = desiredClass, .value = id()};
    case 4:
      return {.form = kFormOffset, .desiredClass = desiredClass, .value = value};
    case 5:
      return {.form = kFormIndex, .desiredClass = desiredClass, .value = value};
    default:
      return {.form = kFormName, .desiredClass = desiredClass, .name = bytes()};
  }
}

/// A published identifier, a code of any bytes, or an identifier with a string in the host.
std::uint32_t RandomDescriptor::id() {
  switch (below(3)) {
    case 0:
      return PSConstA[3 + below(kPSConstCount - 3)].id;
    case 1:
      return code();
    default:
      return theHost().typeIds().idOf("i" + text());
  }
}

/// A code above the run-time identifiers, without a zero byte.
std::uint32_t RandomDescriptor::code() {
  std::uint32_t code = 0x21 + below(0x5F);
  for (int i = 0; i < 3; ++i) code = (code << 8) | (1 + below(255));
  return code;
}

double RandomDescriptor::number() {
  if (oneIn(4)) return static_cast<std::int32_t>(random_());
  if (oneIn(4)) return 0.1234567;
  const double number = std::bit_cast<double>((std::uint64_t{random_()} << 32) | random_());
  return std::isfinite(number) ? number : 0.0;
}

std::int64_t RandomDescriptor::integer() {
  constexpr std::array<std::int64_t, 6> kCorners = {0,
                                                    -1,
                                                    std::numeric_limits<std::int32_t>::min(),
                                                    std::numeric_limits<std::int32_t>::max(),
                                                    std::numeric_limits<std::int64_t>::min(),
                                                    std::numeric_limits<std::int64_t>::max()};
  if (oneIn(3)) return kCorners[below(kCorners.size())];
  return static_cast<std::int64_t>((std::uint64_t{random_()} << 32) | random_());
}

/// UTF-8 with characters that need care in source text.
std::string RandomDescriptor::text() {
  constexpr std::array kPieces = {"a",    "Z9", " ",      "\"",     "'",      "\\",        "\n",
                                  "\r\n", "\t", "\x01",   "7",      "\x7F",   "?\?/",      "//",
                                  "*/",   "%s", "\u00E9", "\u20AC", "\uFFFD", "\U0001F58C"};
  std::string text;
  for (std::uint32_t count = below(9); count > 0; --count) text += kPieces[below(kPieces.size())];
  return text;
}

/// Text that may not be valid UTF-8.
std::string RandomDescriptor::bytes() {
  std::string bytes = text();
  if (oneIn(2)) bytes += static_cast<char>(0x80 + below(0x80));
  return bytes + text();
}

namespace {

double sixDigits(double number) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%g", number);
  return std::strtod(digits, nullptr);
}

Item rebuiltItem(Item item) {
  if (item.type == kTypeGlobalClass) item.type = kTypeClass;
  if (item.type == kTypePath) item.type = kTypeAlias;
  if (auto* number = std::get_if<double>(&item.value)) *number = sixDigits(*number);
  if (auto* number = std::get_if<UnitFloat>(&item.value)) number->value = sixDigits(number->value);
  if (auto* data = std::get_if<Data>(&item.value)) data->bytes.assign(data->bytes.size(), '\0');
  if (auto* object = std::get_if<Object>(&item.value)) object->content = rebuilt(*object->content);
  if (auto* list = std::get_if<List>(&item.value)) list->content = rebuilt(*list->content);
  return item;
}

}  // namespace

ContainerPtr rebuilt(const Container& container) {
  auto result = std::make_shared<Container>();
  for (const Entry& entry : container.entries) {
    result->entries.push_back({entry.key, rebuiltItem(entry.item)});
  }
  return result;
}
