// `mrvsim play`: plays a scenario and writes the log.
#pragma once

#include <string>

namespace simulator {

struct PlayOptions {
  std::string scenario;  ///< a JSON file
  std::string log;       ///< a file; empty: standard output
  std::string plugin;    ///< a module or a bundle; empty: the module in the program's folder
  bool summary = false;  ///< print a summary to standard output instead of a log
};

/// Plays the scenario and returns the program's exit status: 0 if played to its end, 2 if it cannot
/// be played (one line on standard error says why), 3 if the plug-in misused the host or the
/// platform.
int runPlay(const PlayOptions& options);

}  // namespace simulator
