// The checks on a built plug-in. `mrvsim check` lists, selects and reports them from `allChecks`.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simulator {

enum class Outcome { kPassed, kFailed, kNotApplicable };

/// "passed", "failed" or "not applicable".
std::string_view outcomeName(Outcome outcome);

struct Verdict {
  Outcome outcome = Outcome::kPassed;
  std::string reason;  ///< one line; empty if passed
};

inline Verdict passed() { return {}; }
inline Verdict failed(std::string reason) { return {Outcome::kFailed, std::move(reason)}; }
inline Verdict notApplicable(std::string reason) {
  return {Outcome::kNotApplicable, std::move(reason)};
}

struct Check {
  const char* name;
  const char* sentence;  ///< true of a good plug-in
  /// Judges the plug-in: a bundle's folder, the Mach-O file inside, or a Linux module. It changes
  /// the simulated machine of the process, so run one check in each process. An exception counts as
  /// failed.
  Verdict (*run)(const std::string& plugin);
};

/// All checks, in the order in which they are run and listed.
const std::vector<Check>& allChecks();

/// The parts of `allChecks`: on the plug-in's binary, on the files beside it, and on its behaviour.
std::vector<Check> fileChecks();
std::vector<Check> bundleChecks();
std::vector<Check> conductChecks();

}  // namespace simulator
