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

/// An option, or an argument without one.
struct OptionDescription {
  std::string name;                ///< "--log"; of an argument its name, such as "SCENARIO"
  std::string value;               ///< what its value is called; empty: an option without a value
  std::vector<std::string> words;  ///< the only values that are allowed; empty: any
  std::string help;                ///< a sentence without its full stop
  bool isFile = false;             ///< whether the value is the name of a file
  bool isRequired = false;
  bool isRepeated = false;  ///< whether it may be given more than once
};

struct CommandDescription {
  std::string name;
  std::string help;    ///< a sentence without its full stop
  std::string footer;  ///< text that follows the options in the help; may be empty
  std::vector<OptionDescription> options;
  std::vector<OptionDescription> arguments;
};

/// All commands, as the parser knows them: what the manual page and the shells' completions say.
std::vector<CommandDescription> describeCommands();

/// Reads the command line and returns what it asks for: a function that does it and returns the
/// exit status. Options stand before or after files, "--" ends them. `arguments` does not have the
/// program's name. Throws BadCommandLine.
std::function<int()> parseCommandLine(std::vector<std::string> arguments);

}  // namespace simulator
