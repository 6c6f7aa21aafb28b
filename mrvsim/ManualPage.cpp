#include "mrvsim/ManualPage.h"

#include <fmt/format.h>

#include <sstream>

namespace simulator {

namespace {

constexpr char kDescription[] = R"(.SH DESCRIPTION
.B mrvsim
runs a plug-in in a simulated Mac with a simulated host and device.
A scenario says what happens and when; time is virtual.
The name
.B \-
is standard input as an input and standard output as an output.
Options stand before or after files, and
.B \-\-
ends them.
No input is also an output.
)";

constexpr char kRest[] = R"(.SH EXIT STATUS
.TP
.B 0
All was done, and every byte of every output was written.
.TP
.B 1
.BR check :
a check failed;
.BR validate :
a file has a fault.
.TP
.B 2
It could not be done; one line on standard error says why.
Outputs are as they were before.
.TP
.B 3
The plug\-in misused the host or the platform.
.TP
.B 4
The plug\-in crashed, ended the process, or did not come back in time.
The log up to there is written.
.TP
.BR 130 ", " 143
The program was interrupted.
.SH ENVIRONMENT
.TP
.B NO_COLOR
If it is set and not empty, nothing is coloured.
.TP
.B TERM
If it is not set, or
.BR dumb ,
nothing is coloured.
.TP
.B TMPDIR
The folder for temporary files.
.SH EXAMPLES
.nf
mrvsim play scenario.json \-\-summary
mrvsim play scenario.json \-\-log log.jsonl \-\-text
mrvsim play scenario.json \-\-plugin MrvPhotoshop.plugin
mrvsim validate *.json
mrvsim check MrvPhotoshop.plugin
.fi
)";

/// The text with everything that man would obey made plain.
std::string plain(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '\\') {
      result += "\\e";
    } else if (c == '-') {
      result += "\\-";
    } else {
      result += c;
    }
  }
  return result;
}

/// A line that does not begin a request.
std::string plainLine(const std::string& line) {
  const bool isRequest = line.starts_with('.') || line.starts_with('\'');
  return (isRequest ? "\\&" : "") + plain(line) + "\n";
}

std::string argumentText(const OptionDescription& argument) {
  const std::string text = "\\fI" + plain(argument.value) + "\\fR";
  const std::string repeated = argument.isRepeated ? text + "..." : text;
  return argument.isRequired ? repeated : "[" + repeated + "]";
}

std::string synopsis(const CommandDescription& command) {
  std::string text = fmt::format(".br\n\\fBmrvsim {}\\fR", plain(command.name));
  for (const auto& argument : command.arguments) text += " " + argumentText(argument);
  return text + " [\\fIoptions\\fR]\n";
}

std::string allowedText(const OptionDescription& option) {
  if (option.words.empty()) return {};
  return fmt::format(": {}", plain(fmt::format("{}", fmt::join(option.words, ", "))));
}

std::string optionText(const OptionDescription& option) {
  std::string text = ".TP\n\\fB" + plain(option.name) + "\\fR";
  if (!option.value.empty()) text += " \\fI" + plain(option.value) + "\\fR";
  return text + "\n" + plain(option.help) + allowedText(option) + ".\n";
}

std::string commandText(const CommandDescription& command) {
  std::string text = fmt::format(".SS {}\n{}.\n", plain(command.name), plain(command.help));
  for (const auto& argument : command.arguments) {
    text += ".TP\n\\fI" + plain(argument.value) + "\\fR\n" + plain(argument.help) +
            allowedText(argument) + ".\n";
  }
  for (const auto& option : command.options) text += optionText(option);
  if (command.footer.empty()) return text;
  text += ".PP\n.nf\n";
  std::istringstream footer(command.footer);
  for (std::string line; std::getline(footer, line);) text += plainLine(line);
  return text + ".fi\n";
}

}  // namespace

std::string manualPage(const std::vector<CommandDescription>& commands,
                       const std::string& version) {
  std::string text = fmt::format(".TH MRVSIM 1 \"\" \"mrvsim {}\" \"User Commands\"\n", version);
  text += ".SH NAME\nmrvsim \\- a simulated Mac, host and device for a plug\\-in to run in\n";
  text += ".SH SYNOPSIS\n";
  for (const auto& command : commands) text += synopsis(command);
  text += ".br\n\\fBmrvsim \\-\\-version\\fR\n";
  text += kDescription;
  text += ".SH COMMANDS\n";
  for (const auto& command : commands) text += commandText(command);
  return text + kRest;
}

}  // namespace simulator
