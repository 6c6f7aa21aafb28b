// Values as JSON text, byte for byte as `Json::dump` writes them. [any-thread]
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

#include "simulator/base/Json.h"

namespace simulator {

/// Text that is JSON already.
struct JsonText {
  std::string text;
};

/// A value on its way into JSON text. It refers to what it was made from, which must outlive it. Of
/// a text, bytes that are not UTF-8 become U+FFFD.
class JsonValue {
 public:
  JsonValue(std::nullptr_t) {}
  JsonValue(bool value) : value_(value) {}
  JsonValue(double value) : value_(value) {}
  template <class Number>
    requires std::integral<Number> || std::is_enum_v<Number>
  JsonValue(Number value) : value_(widened(value)) {}
  JsonValue(const char* text) : value_(std::string_view(text)) {}
  JsonValue(const std::string& text) : value_(std::string_view(text)) {}
  JsonValue(std::string_view text) : value_(text) {}
  template <std::same_as<Json> Value>
  JsonValue(const Value& value) : value_(&value) {}
  JsonValue(const JsonText& text) : value_(&text) {}

  void appendTo(std::string& text) const;

 private:
  template <class Number>
  static auto widened(Number value) {
    if constexpr (std::is_enum_v<Number>) {
      return widened(static_cast<std::underlying_type_t<Number>>(value));
    } else if constexpr (std::is_signed_v<Number>) {
      return std::int64_t{value};
    } else {
      return std::uint64_t{value};
    }
  }

  std::variant<std::nullptr_t, bool, std::int64_t, std::uint64_t, double, std::string_view,
               const Json*, const JsonText*>
      value_ = nullptr;
};

inline void appendJson(std::string& to, const JsonValue& value) { value.appendTo(to); }

/// "[1,2]": a list of numbers.
template <class Numbers>
JsonText jsonList(const Numbers& numbers) {
  JsonText list{"["};
  for (const auto& number : numbers) {
    if (list.text.size() > 1) list.text += ',';
    appendJson(list.text, number);
  }
  list.text += ']';
  return list;
}

}  // namespace simulator
