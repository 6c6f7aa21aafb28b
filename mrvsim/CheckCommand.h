// `mrvsim check`: judges a built plug-in.
#pragma once

#include <string>
#include <vector>

namespace simulator {

struct CheckOptions {
  std::string plugin;
  bool list = false;              ///< names and sentences only
  bool json = false;              ///< one JSON object in place of a table
  std::vector<std::string> only;  ///< names; empty: all
};

/// Runs the checks, each in a process of its own, and prints what came of them. Returns the
/// program's exit status: 0 where all passed and at least one applied, 1 where not, 2 where there
/// is nothing to check: no such file, or no check of that name.
int runCheck(const CheckOptions& options);

}  // namespace simulator
