#include "simulator/base/JsonText.h"

#include <algorithm>
#include <charconv>

namespace simulator {

namespace {

bool standsForItself(char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; }

struct Append {
  std::string& to;

  void operator()(std::nullptr_t) const { to += "null"; }
  void operator()(bool value) const { to += value ? "true" : "false"; }
  void operator()(std::int64_t value) const { integer(value); }
  void operator()(std::uint64_t value) const { integer(value); }
  void operator()(double value) const { json(value); }
  void operator()(std::string_view value) const {
    if (!std::all_of(value.begin(), value.end(), standsForItself)) return json(value);
    to += '"';
    to += value;
    to += '"';
  }
  void operator()(const Json* value) const { json(*value); }
  void operator()(const JsonText* value) const { to += value->text; }

 private:
  template <class Number>
  void integer(Number value) const {
    char digits[24];
    to.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
  }

  void json(const Json& value) const {
    to += value.dump(-1, ' ', false, Json::error_handler_t::replace);
  }
};

}  // namespace

void JsonValue::appendTo(std::string& text) const { std::visit(Append{text}, value_); }

}  // namespace simulator
