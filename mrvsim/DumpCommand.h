// `mrvsim dump`: runs the plug-in's generator, which writes descriptors as source text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "mrvsim/StepChoice.h"
#include "simulator/host/model/TypeIds.h"
#include "simulator/host/model/Values.h"

namespace simulator {

struct DumpOptions {
  std::string input;                 ///< a JSON file or an action file; "-": standard input
  std::string file;                  ///< the file for the text; "-": standard output
  std::optional<std::string> event;  ///< of JSON: an ID as in JSON; digits give an integer; 'setd'
  StepChoice steps;                  ///< of an action file
  bool ready = false;                ///< write one source file that compiles as it is
  bool list = false;                 ///< print what the input holds, and write nothing
  bool quiet = false;                ///< show no progress
  std::uint64_t maxSize = 100'000'000;  ///< the longest text to write, in bytes
};

/// Reads a descriptor from JSON; `name` stands for the file in errors. JSON's null gives null.
/// Throws `BadJsonFile`.
ContainerPtr parseDescriptor(const std::string& text, const std::string& name, TypeIds& ids);

/// The form of descriptors, and of the choice of steps, for the command's help.
extern const char kDescriptorHelp[];

/// Appends the text, replaces the file by the ready form, or prints the list, and returns the
/// program's exit status: 0 if done, 3 if the generator misused the host or the platform, 4 if it
/// broke; nothing is written then. Its system log goes to standard error. Throws `std::exception`
/// if the input, the event, the choice or the file cannot be used; the file is then unchanged.
int runDump(const DumpOptions& options);

}  // namespace simulator
