#include "mrvsim/Completions.h"

#include <fmt/format.h>

namespace simulator {

namespace {

// Of the program itself.
constexpr char kProgramOptions[] = "--help --version";

std::string namesOf(const std::vector<OptionDescription>& options) {
  std::string names;
  for (const auto& option : options) names += (names.empty() ? "" : " ") + option.name;
  return names;
}

/// The shell's command that offers the values of an option or argument.
std::string bashValues(const OptionDescription& option) {
  if (option.isFile) return "compgen -f -- \"$word\"";
  if (option.words.empty()) return ":";
  return fmt::format("compgen -W '{}' -- \"$word\"", fmt::join(option.words, " "));
}

std::string bashCommand(const CommandDescription& command) {
  std::string text = fmt::format("    {})\n      case $before in\n", command.name);
  for (const auto& option : command.options) {
    if (option.value.empty()) continue;
    text += fmt::format("        {}) {} ;;\n", option.name, bashValues(option));
  }
  text += fmt::format(
      "        *)\n"
      "          if [[ $word == -* ]]; then\n"
      "            compgen -W '{}' -- \"$word\"\n",
      namesOf(command.options));
  if (!command.arguments.empty()) {
    text += fmt::format("          else\n            {}\n", bashValues(command.arguments.back()));
  }
  return text + "          fi ;;\n      esac ;;\n";
}

/// A text between single quotes.
std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text) c == '\'' ? result += "'\\''" : result += c;
  return result + "'";
}

/// A help text inside a specification, in which some characters have a meaning.
std::string zshHelp(const std::string& help) {
  std::string result;
  for (const char c : help) {
    if (c == '[' || c == ']' || c == ':' || c == '\\') result += '\\';
    result += c;
  }
  return result;
}

std::string zshValues(const OptionDescription& option) {
  if (option.isFile) return "_files";
  return option.words.empty() ? " " : fmt::format("({})", fmt::join(option.words, " "));
}

std::string zshOption(const OptionDescription& option) {
  std::string text = option.isRepeated ? "*" : "";
  text += option.name + "[" + zshHelp(option.help) + "]";
  if (!option.value.empty()) text += ":" + option.value + ":" + zshValues(option);
  return quoted(text);
}

std::string zshArgument(const OptionDescription& argument) {
  const std::string rest = argument.isRepeated ? "*:" : ":";
  return quoted(rest + argument.value + ":" + zshValues(argument));
}

std::string zshCommand(const CommandDescription& command) {
  std::string text = fmt::format("    {})\n      _arguments", command.name);
  for (const auto& option : command.options) text += " \\\n        " + zshOption(option);
  for (const auto& argument : command.arguments) text += " \\\n        " + zshArgument(argument);
  return text + " ;;\n";
}

}  // namespace

std::string bashCompletion(const std::vector<CommandDescription>& commands) {
  std::string names;
  for (const auto& command : commands) names += command.name + " ";
  std::string text =
      "# Completes the command line of mrvsim in bash.\n\n"
      "# Prints what may stand at the cursor, one a line.\n"
      "_mrvsim_offers() {\n"
      "  local word=$1 before=$2 command=$3 place=$4\n"
      "  if [ \"$place\" -eq 1 ]; then\n";
  text +=
      fmt::format("    compgen -W '{}{}' -- \"$word\"\n    return\n  fi\n", names, kProgramOptions);
  text += "  case $command in\n";
  for (const auto& command : commands) text += bashCommand(command);
  return text +
         "  esac\n"
         "}\n\n"
         "_mrvsim() {\n"
         "  mapfile -t COMPREPLY < <(_mrvsim_offers \"$2\" \"$3\" \"${COMP_WORDS[1]}\" "
         "\"$COMP_CWORD\")\n"
         "}\n\n"
         "complete -o filenames -F _mrvsim mrvsim\n";
}

std::string zshCompletion(const std::vector<CommandDescription>& commands) {
  std::string text =
      "#compdef mrvsim\n"
      "# Completes the command line of mrvsim in zsh.\n\n"
      "_mrvsim() {\n"
      "  local -a offers\n"
      "  if (( CURRENT == 2 )); then\n"
      "    offers=(\n";
  for (const auto& command : commands) {
    text += "      " + quoted(command.name + ":" + zshHelp(command.help)) + "\n";
  }
  text +=
      "      '--help:Print how the program is called'\n"
      "      '--version:Print the version'\n"
      "    )\n"
      "    _describe command offers\n"
      "    return\n"
      "  fi\n"
      "  shift words\n"
      "  (( CURRENT-- ))\n"
      "  case $words[1] in\n";
  for (const auto& command : commands) text += zshCommand(command);
  return text + "  esac\n}\n\n_mrvsim \"$@\"\n";
}

}  // namespace simulator
