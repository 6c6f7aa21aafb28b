// Plays a plug-in through a scenario for a check.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/base/Log.h"

namespace simulator {

/// What a plug-in did during one scenario.
struct Session {
  std::vector<Json> lines;   ///< the whole log
  bool faultsFired = false;  ///< whether a call was made to fail

  /// The lines whose field "what" is `what`.
  std::vector<Json> of(const std::string& what) const;

  /// The texts of all misuses.
  std::vector<std::string> misuses() const;

  /// The entry point's results, call by call.
  std::vector<std::uint32_t> results() const;
};

/// Plays the plug-in through a scenario, a JSON text, in a child process. Throws
/// `std::runtime_error` with the reason and the step if the plug-in cannot be loaded, lets an
/// exception out, crashes, ends the process or takes too long.
/// REQUIRES: this process has one thread.
Session playSession(const std::string& plugin, const std::string& scenario);

/// The elements of a scenario's list of steps, in which a plug-in meets everything that a host and
/// a device do, from start-up to shut-down.
extern const char* const kWholeDay;

}  // namespace simulator
