// The host's run-time identifiers: a number for each string ID.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace simulator {

/// Numbers string IDs from 1 upward in the order in which they first appear.
class TypeIds {
 public:
  /// The number of `stringId`, a new one where it has none yet.
  std::uint32_t idOf(std::string_view stringId);

  /// The string ID with this number, null where there is none.
  const std::string* stringOf(std::uint32_t id) const;

 private:
  std::deque<std::string> strings_;  // their addresses stay
  std::unordered_map<std::string_view, std::uint32_t> ids_;
};

}  // namespace simulator
