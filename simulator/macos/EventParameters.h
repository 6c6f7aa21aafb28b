// The parameters of the event manager's events. [any-thread]
#pragma once

#include <Carbon/Carbon.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "simulator/base/Log.h"

namespace simulator {

/// The bytes of a parameter; a few are stored without an allocation, as a string's characters are.
class ParameterBytes {
 public:
  ParameterBytes() = default;
  explicit ParameterBytes(std::span<const std::byte> bytes)
      : bytes_(reinterpret_cast<const char*>(bytes.data()), bytes.size()) {}
  std::span<const std::byte> view() const { return std::as_bytes(std::span(bytes_)); }

 private:
  std::string bytes_;
};

struct EventParameter {
  EventParamName name = 0;
  EventParamType type = 0;
  ParameterBytes bytes;
};

/// Whether the parameter is of the type `wanted`; '****' stands for any type.
bool isOfType(const EventParameter& parameter, EventParamType wanted);

/// The parameter as the type `wanted`, which it is not of: an integer ('shor', 'long', 'magn',
/// 'comp') as any other integer type that can hold its value. nullopt if the parameter cannot be
/// converted.
std::optional<EventParameter> converted(const EventParameter& parameter, EventParamType wanted);

/// Appends name, type and value for the log, as a list in JSON: an integer or a single character as
/// a number, longer text as text, else null.
void appendJson(std::string& to, const EventParameter& parameter);

}  // namespace simulator
