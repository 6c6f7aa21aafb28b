#include "simulator/host/model/TypeIds.h"

namespace simulator {

std::uint32_t TypeIds::idOf(std::string_view stringId) {
  const auto known = ids_.find(stringId);
  if (known != ids_.end()) return known->second;
  strings_.emplace_back(stringId);
  const auto id = static_cast<std::uint32_t>(strings_.size());
  ids_.emplace(strings_.back(), id);
  return id;
}

const std::string* TypeIds::stringOf(std::uint32_t id) const {
  return id == 0 || id > strings_.size() ? nullptr : &strings_[id - 1];
}

}  // namespace simulator
