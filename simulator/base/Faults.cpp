#include "simulator/base/Faults.h"

#include <algorithm>
#include <utility>

namespace simulator {

void Faults::add(FaultRule rule) {
  if (rule.times == 0) return;
  const std::lock_guard lock(mutex_);
  rules_.push_back(std::move(rule));
  armed_ = true;
}

void Faults::clear() {
  const std::lock_guard lock(mutex_);
  rules_.clear();
  armed_ = false;
  fired_ = 0;
  lastFired_.clear();
  calls_.clear();
}

std::map<std::string, std::uint64_t> Faults::calls() {
  const std::lock_guard lock(mutex_);
  return {calls_.begin(), calls_.end()};
}

std::string Faults::lastFired() {
  const std::lock_guard lock(mutex_);
  return lastFired_;
}

std::optional<std::int32_t> Faults::strikeArmed(std::string_view procedure) {
  const std::lock_guard lock(mutex_);
  auto count = calls_.find(procedure);
  if (count == calls_.end()) count = calls_.emplace(procedure, 0).first;
  ++count->second;
  const std::string_view all = procedure.starts_with("Mac.") ? "Mac.*" : "*";
  const auto rule = std::find_if(rules_.begin(), rules_.end(), [&](const FaultRule& r) {
    return r.procedure == procedure || r.procedure == all;
  });
  if (rule == rules_.end()) return std::nullopt;
  if (rule->after > 0) {
    --rule->after;
    return std::nullopt;
  }
  const std::int32_t error = rule->error;
  ++fired_;
  lastFired_ = procedure;
  if (--rule->times == 0) rules_.erase(rule);
  return error;
}

Faults& theFaults() {
  static Faults& faults = *new Faults;
  return faults;
}

}  // namespace simulator
