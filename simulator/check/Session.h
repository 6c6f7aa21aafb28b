// A plug-in played for a check.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/base/Log.h"

namespace simulator {

/// What came of it.
struct Session {
  std::vector<Json> lines;   ///< the whole log
  bool faultsFired = false;  ///< whether a call was made to fail

  /// The lines of one kind.
  std::vector<Json> of(const std::string& what) const;

  /// The texts of all misuses.
  std::vector<std::string> misuses() const;

  /// What the entry point returned, call by call.
  std::vector<std::uint32_t> results() const;
};

/// Plays the plug-in through a scenario, a JSON text, in this process. Throws what loading throws.
Session playSession(const std::string& plugin, const std::string& scenario);

/// Steps in which a plug-in meets all that a host and a device do, from start-up to shut-down: the
/// inside of a scenario's list of steps.
extern const char* const kWholeDay;

}  // namespace simulator
