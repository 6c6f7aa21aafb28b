// The simulated machine as most tests of the plug-in need it.
#pragma once

#include <SPMData.h>
#include <gmock/gmock.h>

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
#include "tests/support/PrintJson.h"

namespace testing_support {

/// Records the log, sets a temporary home folder and passes the host's basic suite to the plug-in's
/// code. The destructor fails the test if anything was misused or leaked.
class Machine {
 public:
  Machine();
  ~Machine();

  /// All lines so far, or those whose `what` is given.
  const std::vector<simulator::Json>& lines() const { return lines_; }
  std::vector<simulator::Json> lines(const std::string& what) const;

  /// The lines since the last call.
  std::vector<simulator::Json> drain();

  /// Sets the misuses that the test causes; others, or others in number, fail it.
  using Misuses = testing::Matcher<const std::vector<std::string>&>;
  void expectMisuses(const Misuses& texts) { expectedMisuses_ = texts; }
  void expectMisuse(const testing::Matcher<const std::string&>& text) {
    expectMisuses(testing::ElementsAre(text));
  }

  /// The preferences folder, which contains the host's settings folders.
  std::filesystem::path preferences() const;

 private:
  simulator::TemporaryHome home_;
  std::vector<simulator::Json> lines_;
  std::size_t drained_ = 0;
  Misuses expectedMisuses_ = testing::IsEmpty();
};

/// The `types` of a "handler" line, from pairs of class and kind.
simulator::Json eventTypes(const std::vector<std::pair<std::string, int>>& types);

/// The outcome of one run of `failEachHostCall`.
struct Outcome {
  int result = 0;
  bool threw = false;
  std::uint32_t thrown = 0;
  std::string failed = {};  ///< the procedure that was made to fail, "Suite.Member"
};

/// Runs `call` repeatedly. In run `n`, counted from 0, the host call with index `n` fails with
/// `error`; `check` gets `n` and the outcome. The first run that makes no such call must succeed
/// and is the last. No run may leak. Returns the number of runs in which a call failed.
int failEachHostCall(std::int32_t error, const std::function<Outcome()>& call,
                     const std::function<void(int n, const Outcome&)>& check);

}  // namespace testing_support
