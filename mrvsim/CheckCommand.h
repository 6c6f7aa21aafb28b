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
};

/// Runs the checks, each in a child process, and prints the results. Returns the program's exit
/// status: 0 if none failed and at least one passed, 1 otherwise, 2 if the file does not exist or a
/// check's name is unknown (one line on standard error says which).
int runCheck(const CheckOptions& options);

}  // namespace simulator
