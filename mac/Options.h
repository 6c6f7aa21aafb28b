// The command line of mrvmac.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace mrvmac {

struct Options {
  std::string bundle;    ///< the plug-in's bundle
  std::string scenario;  ///< what the stand-in device does
  std::string expected;  ///< the log of the simulated Mac for it
  std::string report = "mrvmac-report.txt";
  bool ask = true;    ///< ask the user for the permission to synthesize input
  bool help = false;  ///< print the help and do nothing
};

/// Thrown for a wrong command line; `what` is one line.
class BadOptions : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// Reads the arguments that follow the program's name; `folder`, where the program is, has the
/// files that are not named. Throws `BadOptions`. [any-thread]
Options parseOptions(const std::vector<std::string>& arguments, const std::string& folder);

/// The text for --help. [any-thread]
const char* help();

}  // namespace mrvmac
