// `mrvsim dump`: has the plug-in's generator write a descriptor out as source text.
#pragma once

#include <string>

namespace simulator {

struct DumpOptions {
  std::string descriptor;      ///< a JSON file
  std::string file;            ///< what the text is appended to
  std::string event = "setd";  ///< an ID as in JSON; digits stand for an integer
};

/// How descriptors are written as JSON, for the command's help.
extern const char kDescriptorHelp[];

/// Dumps and returns the program's exit status: 0 done, 2 for a descriptor, an event or a file that
/// cannot be used (one line on standard error tells why, and the file is left as it was), 3 where
/// the generator misused the host or the platform. Its system log goes to standard error.
int runDump(const DumpOptions& options);

}  // namespace simulator
