// Failures on command: any procedure of the simulated host can be made to fail at its n-th call.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// One order to fail. Procedures are named "Suite.Member" ("ActionControl.Get",
/// "Basic.AcquireSuite", "Framework.Install"); "*" stands for every one of them.
struct FaultRule {
  std::string procedure;
  std::int32_t error = 0;   ///< what the failing calls return
  std::uint64_t after = 0;  ///< so many calls pass first
  std::uint64_t times = 1;  ///< then so many fail
};

/// The standing orders to fail. [any-thread]
class Faults {
 public:
  /// Adds an order. Of several for one procedure the later ones wait until the earlier are used up.
  void add(FaultRule rule);

  /// Forgets all orders and counts.
  void clear();

  /// Counts a call of `procedure`: the error that it must return, or none where it may go on.
  std::optional<std::int32_t> strike(std::string_view procedure);

  /// How many calls were made to fail since the last `clear`.
  std::uint64_t fired() const { return fired_.load(); }

  /// The procedure of the last such call; empty where there was none.
  std::string lastFired();

 private:
  std::mutex mutex_;
  std::vector<FaultRule> rules_;
  std::string lastFired_;
  std::atomic<bool> armed_{false};
  std::atomic<std::uint64_t> fired_{0};
};

/// The one set of orders of the process; it outlives every static object.
Faults& theFaults();

}  // namespace simulator
