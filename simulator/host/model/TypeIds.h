// The host's runtime IDs: one number for each string ID.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace simulator {

/// Numbers string IDs from 1 in the order in which they first appear.
class TypeIds {
 public:
  /// The number of `stringId`; assigns the next one if it has none.
  std::uint32_t idOf(std::string_view stringId);

  /// The string ID with this number; null if the number is not assigned.
  const std::string* stringOf(std::uint32_t id) const;

 private:
  std::deque<std::string> strings_;  // a deque keeps the addresses that ids_ refers to
  std::unordered_map<std::string_view, std::uint32_t> ids_;
};

}  // namespace simulator
