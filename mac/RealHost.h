// The host's side of the plug-in: the simulator's suites, the bundle, the stand-in framework.
// [main-thread]
#pragma once

#include <stdexcept>
#include <string>

#include "mac/Beliefs.h"
#include "mac/StandIn.h"
#include "simulator/scenario/Scenario.h"

namespace mrvmac {

/// Thrown if something that mrvmac needs is missing; `what` is one line.
class CannotRun : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// The stand-in in its folder. Throws `CannotRun` if it cannot be loaded.
class StandInFramework {
 public:
  explicit StandInFramework(const std::string& folder);

  void send(const simulator::DeviceMessage& message, std::int64_t at) const;
  void report(Observations& seen) const;

 private:
  StandInSend send_;
  StandInRead read_;
};

/// The plug-in, and the host that it talks to.
class RealHost {
 public:
  /// Sets the simulated host up and loads the bundle; whether it loads goes to `seen`.
  RealHost(const simulator::HostSetup& setup, const std::string& bundle, Observations& seen);

  /// Calls the entry point; the results of "Startup" and "Shutdown" go to `seen`. Does nothing if
  /// the bundle was not loaded.
  void call(const simulator::CallStep& step, Observations& seen);

 private:
  using Entry = int (*)(const char* caller, const char* selector, void* message);
  Entry entry_ = nullptr;
};

}  // namespace mrvmac
