// `mrvsim dump`: runs the plug-in's generator, which writes a descriptor as source text.
#pragma once

#include <string>

namespace simulator {

struct DumpOptions {
  std::string descriptor;      ///< a JSON file
  std::string file;            ///< the file to append the text to
  std::string event = "setd";  ///< an ID as in JSON; digits give an integer
};

/// The JSON form of descriptors, for the command's help.
extern const char kDescriptorHelp[];

/// Appends the text and returns the program's exit status: 0 if done, 2 if the descriptor, the
/// event or the file cannot be used (one line on standard error says why, and the file is
/// unchanged), 3 if the generator misused the host or the platform. Its system log goes to standard
/// error.
int runDump(const DumpOptions& options);

}  // namespace simulator
