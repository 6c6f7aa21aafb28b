// The parameters of the event manager's events. [any-thread]
#pragma once

#include <Carbon/Carbon.h>

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "simulator/base/Log.h"

namespace simulator {

/// The bytes of a parameter; up to 16 are stored without an allocation.
class ParameterBytes {
 public:
  ParameterBytes() = default;
  explicit ParameterBytes(std::span<const std::byte> bytes);
  std::span<const std::byte> view() const;

 private:
  std::array<std::byte, 16> small_{};
  std::vector<std::byte> large_;
  std::size_t size_ = 0;
};

struct EventParameter {
  EventParamName name = 0;
  EventParamType type = 0;
  ParameterBytes bytes;
};

/// The parameter as the type `wanted`; '****' stands for any type. An integer ('shor', 'long',
/// 'magn', 'comp') becomes any other integer type that can hold its value. nullopt if the parameter
/// cannot be converted.
std::optional<EventParameter> converted(const EventParameter& parameter, EventParamType wanted);

/// Appends the value for the log, as JSON text: an integer or a single character as a number,
/// longer text as text, else null.
void appendValue(std::string& to, const EventParameter& parameter);

}  // namespace simulator
