// `mrvsim dump`: runs the plug-in's generator, which writes a descriptor as source text.
#pragma once

#include <string>

#include "simulator/host/model/TypeIds.h"
#include "simulator/host/model/Values.h"

namespace simulator {

struct DumpOptions {
  std::string descriptor;      ///< a JSON file; "-": standard input
  std::string file;            ///< the file to append the text to; "-": standard output
  std::string event = "setd";  ///< an ID as in JSON; digits give an integer
};

/// Reads a descriptor from JSON; `name` stands for the file in errors. JSON's null gives null.
/// Throws `BadJsonFile`.
ContainerPtr parseDescriptor(const std::string& text, const std::string& name, TypeIds& ids);

/// The JSON form of descriptors, for the command's help.
extern const char kDescriptorHelp[];

/// Appends the text and returns the program's exit status: 0 if done, 3 if the generator misused
/// the host or the platform. Its system log goes to standard error. Throws `std::exception` if the
/// descriptor, the event or the file cannot be used; the file is then unchanged.
int runDump(const DumpOptions& options);

}  // namespace simulator
