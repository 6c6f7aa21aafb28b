#include "simulator/host/json/JsonFields.h"

#include <fmt/format.h>

#include <algorithm>

namespace simulator {

namespace {

std::uint32_t numericId(const Json& json) {
  const auto id = integerInRange<std::uint32_t>(json);
  if (!id) throw JsonFault{"", "must be from 0 to 4294967295 for an ID"};
  return *id;
}

}  // namespace

std::string pointerStep(std::string_view name) {
  std::string text;
  for (const char c : name) {
    if (c == '~') {
      text += "~0";
    } else if (c == '/') {
      text += "~1";
    } else {
      text += c;
    }
  }
  return text;
}

std::optional<std::uint32_t> codeOf(std::string_view text) {
  const auto isAscii = [](unsigned char c) { return c < 0x80; };
  if (text.size() != 4 || !std::all_of(text.begin(), text.end(), isAscii)) return std::nullopt;
  std::uint32_t code = 0;
  for (const char c : text) code = code << 8 | static_cast<unsigned char>(c);
  return code;
}

std::uint32_t readId(const Json& json, TypeIds& ids) {
  if (json.is_number_integer()) return numericId(json);
  if (json.is_string()) {
    const std::string_view text = json.get_ref<const std::string&>();
    if (text.size() > 1 && text.front() == '$') return ids.idOf(text.substr(1));
    if (const auto code = codeOf(text)) return *code;
  }
  throw JsonFault{
      "",
      "must be an ID: four characters, \"$\" and a string ID, or an integer from 0 to 4294967295"};
}

JsonFields::JsonFields(const Json& object, TypeIds& ids) : object_(object), ids_(ids) {
  if (!object.is_object()) throw JsonFault{"", "must be an object"};
}

const Json& JsonFields::at(const char* name) const {
  const auto field = object_.find(name);
  if (field == object_.end()) throw JsonFault{"", std::string("lacks the field \"") + name + '"'};
  read_.emplace_back(name);
  return *field;
}

std::uint32_t JsonFields::id(const char* name) const {
  const Json& json = at(name);
  try {
    return readId(json, ids_);
  } catch (const JsonFault& fault) {
    throw JsonFault{place(name), fault.reason};
  }
}

std::uint32_t JsonFields::code(const char* name) const {
  const Json& json = at(name);
  const auto code = json.is_string() ? codeOf(json.get_ref<const std::string&>()) : std::nullopt;
  if (!code) throw JsonFault{place(name), "must be a text of four ASCII characters"};
  return *code;
}

double JsonFields::number(const char* name) const {
  const Json& json = at(name);
  if (!json.is_number()) throw JsonFault{place(name), "must be a number"};
  return json.get<double>();
}

bool JsonFields::boolean(const char* name) const {
  const Json& json = at(name);
  if (!json.is_boolean()) throw JsonFault{place(name), "must be true or false"};
  return json.get<bool>();
}

std::string JsonFields::text(const char* name) const {
  const Json& json = at(name);
  if (!json.is_string()) throw JsonFault{place(name), "must be a text"};
  return json.get<std::string>();
}

void JsonFields::expectNoMore() const {
  for (const auto& [name, value] : object_.items()) {
    if (std::find(read_.begin(), read_.end(), name) != read_.end()) continue;
    throw JsonFault{"/" + pointerStep(name),
                    fmt::format("is an unknown field; allowed here: {}", fmt::join(read_, ", "))};
  }
}

}  // namespace simulator
