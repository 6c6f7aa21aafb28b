// Reads and checks the fields of one item or form in JSON.
#pragma once

#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simulator/base/Log.h"
#include "simulator/host/model/TypeIds.h"

namespace simulator {

/// An error; `place` is a JSON pointer relative to the value that was being read.
struct JsonFault {
  std::string place;
  std::string reason;
};

/// The integer as a T; nullopt if it is out of range. REQUIRES: `json` is an integer.
template <std::integral T>
std::optional<T> integerInRange(const Json& json) {
  const bool inRange = json.is_number_unsigned() ? std::in_range<T>(json.get<std::uint64_t>())
                                                 : std::in_range<T>(json.get<std::int64_t>());
  return inRange ? std::optional(json.get<T>()) : std::nullopt;
}

/// A name as a step of a JSON pointer (RFC 6901).
std::string pointerStep(std::string_view name);

/// The four-character code that a text spells; nullopt unless it is four ASCII characters.
std::optional<std::uint32_t> codeOf(std::string_view text);

/// Reads an ID in any of its three forms. Throws JsonFault.
std::uint32_t readId(const Json& json, TypeIds& ids);

/// Each member reads one field. Throws JsonFault if the field is missing or of the wrong type.
class JsonFields {
 public:
  JsonFields(const Json& object, TypeIds& ids);

  const Json& at(const char* name) const;
  std::uint32_t id(const char* name) const;
  /// A four-character code; other forms of an ID are errors.
  std::uint32_t code(const char* name) const;
  double number(const char* name) const;
  bool boolean(const char* name) const;
  std::string text(const char* name) const;

  template <std::integral T>
  T integer(const char* name) const {
    const Json& json = at(name);
    const auto value = json.is_number_integer() ? integerInRange<T>(json) : std::nullopt;
    if (!value) throw JsonFault{place(name), needsInteger<T>()};
    return *value;
  }

  /// Throws JsonFault if the object has a field that was not read.
  void expectNoMore() const;

 private:
  template <std::integral T>
  static std::string needsInteger() {
    return "must be an integer from " + std::to_string(std::numeric_limits<T>::min()) + " to " +
           std::to_string(std::numeric_limits<T>::max());
  }

  static std::string place(const char* name) { return std::string("/") + name; }

  const Json& object_;
  TypeIds& ids_;
  mutable std::vector<std::string> read_;
};

}  // namespace simulator
