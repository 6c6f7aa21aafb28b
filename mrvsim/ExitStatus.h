// The exit statuses of the program.
#pragma once

namespace simulator {

enum ExitStatus {
  kDone = 0,
  kFoundFaults = 1,       ///< a check failed, or a file that was validated has a fault
  kNotDone = 2,           ///< bad command line or input, or an output that could not be written
  kMisused = 3,           ///< the plug-in misused the host or the platform
  kPluginBroke = 4,       ///< it crashed, ended the process or did not come back in time
  kInterruptedBase = 128  ///< and the number of the signal that interrupted the program
};

}  // namespace simulator
