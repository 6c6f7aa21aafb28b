// `mrvsim play`: plays a scenario and writes the log.
#pragma once

#include <string>

namespace simulator {

struct PlayOptions {
  std::string scenario;
  std::string log;       ///< a file; empty: standard output
  std::string plugin;    ///< a module; empty: the one beside the program
  bool summary = false;  ///< a summary to standard output in place of a log there
};

/// Plays and returns the program's exit status: 0 played to its end, 2 cannot be played (one line
/// on standard error tells why), 3 the plug-in misused the host or the platform.
int runPlay(const PlayOptions& options);

}  // namespace simulator
