// `mrvsim play`: plays scenarios and writes what the plug-in did.
#pragma once

#include <string>
#include <vector>

namespace simulator {

struct PlayOptions {
  std::vector<std::string> scenarios;  ///< JSON files; "-": standard input
  std::string log;                     ///< a file for the log, "-": standard output; empty: no log
  std::string report;    ///< a file for the report, "-": standard output; empty: no report
  std::string plugin;    ///< a module or a bundle; empty: the module in the program's folder
  bool summary = false;  ///< print a summary to standard output
  bool text = false;     ///< print the log for people to standard output
  bool quiet = false;    ///< show no progress
  double timeout = 10;   ///< the longest that the plug-in may take for one step, in seconds
};

/// Plays the scenarios in turn, each in a process of its own. Returns the program's exit status: 0
/// if all were played to their ends, 3 if the plug-in misused the host or the platform, 4 if it
/// crashed, ended the process or did not come back; one line on standard error then says where, no
/// further scenario is played, and the log up to there is written. Throws `std::exception` if it
/// could not be done; all outputs that are files are then as they were.
int runPlay(const PlayOptions& options);

}  // namespace simulator
