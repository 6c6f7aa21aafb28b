// The checks on a built plug-in: each a name, a sentence that is true of a good one, and a function
// that finds out. The list is all there is; listing, choosing and reporting follow from it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simulator {

enum class Outcome { passed, failed, notApplicable };

/// "passed", "failed" or "not applicable".
std::string_view outcomeName(Outcome outcome);

struct Verdict {
  Outcome outcome = Outcome::passed;
  std::string reason;  ///< one line; empty where passed
};

inline Verdict passed() { return {}; }
inline Verdict failed(std::string reason) { return {Outcome::failed, std::move(reason)}; }
inline Verdict notApplicable(std::string reason) {
  return {Outcome::notApplicable, std::move(reason)};
}

struct Check {
  const char* name;
  const char* sentence;
  /// Judges the plug-in: a bundle's folder, the Mach-O file inside, or a module of this system. It
  /// uses up the simulated machine of its process. What it throws counts as failed.
  Verdict (*run)(const std::string& plugin);
};

/// In the order in which they are run and listed.
const std::vector<Check>& allChecks();

/// The parts of the list.
std::vector<Check> fileChecks();
std::vector<Check> conductChecks();

}  // namespace simulator
