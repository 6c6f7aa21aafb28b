// Failures on command: any procedure of the simulated host, and any of the platform's calls that
// can fail, can be made to fail at its n-th call.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// One order to fail. Procedures are named "Suite.Member" ("ActionControl.Get",
/// "Basic.AcquireSuite", "Framework.Install"), the platform's calls "Mac.CreateEvent". "Mac.*"
/// matches every call of the platform, "*" every other procedure.
struct FaultRule {
  std::string procedure;
  std::int32_t error = 0;   ///< what each failing call returns
  std::uint64_t after = 0;  ///< calls that pass before the first failure
  std::uint64_t times = 1;  ///< calls that fail after those
};

/// The pending orders to fail. [any-thread]
class Faults {
 public:
  /// Adds an order. Orders for the same procedure take effect one after another, in the order in
  /// which they were added. An order with `times` 0 is ignored.
  void add(FaultRule rule);

  /// Removes all orders and resets the counts.
  void clear();

  /// Counts a call of `procedure`. Returns the error that the call must return, nullopt if the call
  /// may proceed.
  std::optional<std::int32_t> strike(std::string_view procedure) {
    return armed_.load(std::memory_order_relaxed) ? strikeArmed(procedure) : std::nullopt;
  }

  /// How often each procedure was called since the last `clear`, counted while there are orders.
  std::map<std::string, std::uint64_t> calls();

  /// How many calls were made to fail since the last `clear`.
  std::uint64_t fired() const { return fired_.load(); }

  /// The procedure of the last call made to fail since the last `clear`; empty if there was none.
  std::string lastFired();

 private:
  std::optional<std::int32_t> strikeArmed(std::string_view procedure);

  std::mutex mutex_;
  std::vector<FaultRule> rules_;
  std::string lastFired_;
  std::map<std::string, std::uint64_t, std::less<>> calls_;
  std::atomic<bool> armed_{false};
  std::atomic<std::uint64_t> fired_{0};
};

/// The orders of this process. Never destroyed, so static destructors may use it. [any-thread]
Faults& theFaults();

}  // namespace simulator
