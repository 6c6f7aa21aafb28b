// `mrvsim check`: runs the checks on a built plug-in.
#pragma once

#include <string>
#include <vector>

namespace simulator {

struct CheckOptions {
  std::string plugin;             ///< a bundle or a module
  bool list = false;              ///< print the names and sentences only
  bool json = false;              ///< print one JSON object instead of a table
  std::vector<std::string> only;  ///< names of the checks to run; empty: all
  double timeout = 60;  ///< the longest that the plug-in may take in one check, in seconds
};

/// Runs the checks, each in a child process, and prints each result as it comes. Returns the
/// program's exit status: 0 if none failed and at least one passed, 1 otherwise. Throws
/// `std::exception` if the file is not a plug-in or a check's name is unknown.
int runCheck(const CheckOptions& options);

}  // namespace simulator
