// What most tests of the plug-in need of the simulated machine.
#pragma once

#include <SPMData.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "simulator/base/Faults.h"
#include "simulator/base/Log.h"
#include "simulator/host/Host.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/EventManager.h"
#include "simulator/macos/Folders.h"
#include "simulator/macos/WindowServer.h"
#include "simulator/scenario/HostFiles.h"
#include "simulator/scenario/Player.h"
#include "suites/BasicSuite.h"

namespace testing_support {

/// A machine whose log is kept, with a home folder of its own and the host's basic suite handed to
/// the plug-in's code. At its end nothing may have been misused or leaked.
class Machine {
 public:
  Machine();
  ~Machine();

  /// The lines so far, and the lines of one kind.
  const std::vector<simulator::Json>& lines() const { return lines_; }
  std::vector<simulator::Json> lines(const std::string& what) const;

  /// The lines since the last call.
  std::vector<simulator::Json> drain();

  /// Lets misuses pass that a test makes on purpose.
  void expectMisuses(int count) { expectedMisuses_ = count; }

  /// The folder in which the host keeps its settings folders.
  std::filesystem::path preferences() const;

 private:
  simulator::TemporaryHome home_;
  std::vector<simulator::Json> lines_;
  std::size_t drained_ = 0;
  int expectedMisuses_ = 0;
};

/// The event types of a "handler" line: class and kind of each.
simulator::Json eventTypes(const std::vector<std::pair<std::string, int>>& types);

/// What one run of an anomaly loop came to.
struct Outcome {
  int result = 0;
  bool threw = false;
  std::uint32_t thrown = 0;
  std::string failed = {};  ///< the host's procedure that was made to fail, "Suite.Member"
};

/// Runs `call` again and again, with the first host call made to fail with `error`, then the
/// second, and so on, until a run meets no failure. `check` is told each failing outcome; the last
/// run must succeed. Nothing may leak at any point. Returns how many calls were made to fail.
int failEachHostCall(std::int32_t error, const std::function<Outcome()>& call,
                     const std::function<void(int n, const Outcome&)>& check);

}  // namespace testing_support
