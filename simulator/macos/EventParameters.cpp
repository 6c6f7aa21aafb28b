#include "simulator/macos/EventParameters.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>
#include <limits>

namespace simulator {

namespace {

// Published types that the platform headers here do not declare.
constexpr EventParamType kTypeSInt32 = fourCharCode("long");
constexpr EventParamType kTypeWildCard = fourCharCode("****");

template <class T>
std::optional<std::int64_t> readAs(std::span<const std::byte> bytes) {
  if (bytes.size() != sizeof(T)) return std::nullopt;
  T value;
  std::memcpy(&value, bytes.data(), sizeof value);
  return value;
}

/// The parameter's value if it is an integer.
std::optional<std::int64_t> integerOf(const EventParameter& parameter) {
  switch (parameter.type) {
    case typeSInt16:
      return readAs<std::int16_t>(parameter.bytes.view());
    case kTypeSInt32:
      return readAs<std::int32_t>(parameter.bytes.view());
    case typeUInt32:
      return readAs<std::uint32_t>(parameter.bytes.view());
    case typeSInt64:
      return readAs<std::int64_t>(parameter.bytes.view());
    default:
      return std::nullopt;
  }
}

template <class T>
std::optional<ParameterBytes> writtenAs(std::int64_t value) {
  using Limits = std::numeric_limits<T>;
  if (value < std::int64_t{Limits::min()} || std::int64_t{Limits::max()} < value) {
    return std::nullopt;
  }
  const T narrow = static_cast<T>(value);
  return ParameterBytes(std::as_bytes(std::span(&narrow, 1)));
}

std::optional<ParameterBytes> integerBytes(std::int64_t value, EventParamType type) {
  switch (type) {
    case typeSInt16:
      return writtenAs<std::int16_t>(value);
    case kTypeSInt32:
      return writtenAs<std::int32_t>(value);
    case typeUInt32:
      return writtenAs<std::uint32_t>(value);
    case typeSInt64:
      return writtenAs<std::int64_t>(value);
    default:
      return std::nullopt;
  }
}

JsonValue textOf(std::span<const std::byte> bytes) {
  if (bytes.size() == 1) return std::to_integer<std::int64_t>(bytes[0]);
  return std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

/// Most parameters are integers; their text is put together in one piece.
void appendInteger(std::string& to, const IdText& name, const IdText& type, std::int64_t value) {
  char text[] = R"(["name","type",-9223372036854775808])";
  std::copy(name.begin(), name.end(), text + 2);
  std::copy(type.begin(), type.end(), text + 9);
  char* const end = std::to_chars(text + 15, std::end(text), value).ptr;
  *end = ']';
  to.append(text, end + 1);
}

}  // namespace

bool isOfType(const EventParameter& parameter, EventParamType wanted) {
  return wanted == parameter.type || wanted == kTypeWildCard;
}

std::optional<EventParameter> converted(const EventParameter& parameter, EventParamType wanted) {
  const auto value = integerOf(parameter);
  if (!value) return std::nullopt;
  const auto bytes = integerBytes(*value, wanted);
  if (!bytes) return std::nullopt;
  return EventParameter{parameter.name, wanted, *bytes};
}

void appendJson(std::string& to, const EventParameter& parameter) {
  const auto value = integerOf(parameter);
  const auto name = plainId(parameter.name);
  const auto type = plainId(parameter.type);
  if (value && name && type) return appendInteger(to, *name, *type, *value);
  to += '[';
  appendId(to, parameter.name);
  to += ',';
  appendId(to, parameter.type);
  to += ',';
  if (parameter.type == typeChar) {
    appendJson(to, textOf(parameter.bytes.view()));
  } else {
    appendJson(to, value ? JsonValue(*value) : JsonValue(nullptr));
  }
  to += ']';
}

}  // namespace simulator
