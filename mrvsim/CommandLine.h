// The command line of the program: commands, options and files.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace simulator {

/// Thrown for a command line that makes no sense; `what` is one line that says what is allowed.
class BadCommandLine : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// Reads the command line and returns what it asks for: a function that does it and returns the
/// exit status. Options stand before or after files, "--" ends them. `arguments` does not have the
/// program's name. Throws BadCommandLine.
std::function<int()> parseCommandLine(std::vector<std::string> arguments);

}  // namespace simulator
