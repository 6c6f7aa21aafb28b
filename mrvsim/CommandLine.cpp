#include "mrvsim/CommandLine.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <sstream>

#include "mrvsim/CheckCommand.h"
#include "mrvsim/DumpCommand.h"
#include "mrvsim/ExitStatus.h"
#include "mrvsim/ListCommand.h"
#include "mrvsim/LiveCommand.h"
#include "mrvsim/Output.h"
#include "mrvsim/PlayCommand.h"
#include "mrvsim/ReportCommand.h"
#include "mrvsim/ValidateCommand.h"
#include "mrvsim/Version.h"
#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

using Command = std::function<int()>;

int print(const std::string& text) {
  Output out("-");
  out.open();
  out.write(text);
  out.commit();
  return kDone;
}

// The names of values. One with bars lists the words that are allowed.
constexpr char kFile[] = "FILE";

/// An option with one value that may be given once and is not empty.
template <class Value>
CLI::Option* addValue(CLI::App& command, const std::string& name, Value& value,
                      const std::string& help) {
  return command.add_option(name, value, help)->multi_option_policy(CLI::MultiOptionPolicy::Throw);
}

double secondsOf(const std::string& text) {
  constexpr double kLeast = 0.01;
  constexpr double kMost = 86400;
  double seconds = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, seconds);
  const bool good = error == std::errc() && stop == end && seconds >= kLeast && seconds <= kMost;
  if (good) return seconds;
  throw BadCommandLine(fmt::format("--timeout {}: must be a number of seconds from {:g} to {:g}",
                                   printable(text), kLeast, kMost));
}

/// A number of bytes; k, M and G after it stand for a thousand, a million and a thousand million.
std::uint64_t bytesOf(const std::string& text) {
  constexpr std::uint64_t kMost = 1'000'000'000'000;
  std::uint64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  const std::string_view suffix(stop, end);
  const std::vector<std::string_view> suffixes = {"", "k", "M", "G"};
  std::uint64_t unit = 1;
  for (auto known = suffixes.begin(); known != suffixes.end(); ++known, unit *= 1000) {
    const bool good = error == std::errc() && suffix == *known && number >= 1;
    if (good && number <= kMost / unit) return number * unit;
  }
  throw BadCommandLine(fmt::format(
      "--max-size {}: must be a number of bytes from 1 to 1000G, such as 4096, 500k, 100M or 2G",
      printable(text)));
}

/// Adds the option `--timeout`; `limit` keeps its value if the option is not given.
void addTimeout(CLI::App& command, double& limit, const std::string& what) {
  command
      .add_option_function<std::string>(
          "--timeout", [&limit](const std::string& text) { limit = secondsOf(text); },
          fmt::format("Seconds of processor time, or of standing still, after which {} ends the "
                      "plug-in (default {:g})",
                      what, limit))
      ->type_name("SECONDS");
}

/// The words of the summary; a test holds that none is missing.
constexpr char kPlayHelp[] = R"(
The summary begins with a sentence. Then it shows the time from left to right, a
line for each kind of thing, and at the end the counts. Its words:

    sample        one report of the device, which has six numbers
    push or pull  samples that are strongest along the cap's axis; they zoom
    slide         samples that are strongest sideways, up or down; they pan
    twist         samples that are strongest about the cap's axis; they change
                  the brush
    at rest       samples in which none of these moved
    background    another application was in front; such samples do nothing
    motion        the time from the first sample to the last
    tick          one step of a scroll wheel that the plug-in turned for the host
    zoom in, zoom out
                  ticks that enlarge the view, and that reduce it
    pan           ticks that move the view
    brush keys    keys for a larger or smaller brush that the plug-in typed
    waiting       the share of the time from a tick to the host's redraw; the
                  plug-in does nothing with the samples that zoom or pan then
    without effect
                  how many samples those were; the plug-in does not say, so the
                  number is inferred
    held back     real clicks of the mouse that the host did not get, because a
                  pan was in progress
    zoom, brush size
                  what the host then showed, in per cent and in pixels
    view's corner where the document's top left corner is, in pixels
    leaked, misuse
                  what the plug-in did wrong with objects of the host or the
                  system: kept for ever, freed twice, used after they were freed
    key left down a key that the plug-in pressed and did not release

Exit status: 0 if the plug-in did nothing wrong, 2 if it could not be played, 3
after a misuse, 4 if the plug-in crashed, ended the process or did not come back.)";

void addPlay(CLI::App& app, Command& action) {
  auto options = std::make_shared<PlayOptions>();
  CLI::App* play = app.add_subcommand("play", "Play scenarios and write what the plug-in does");
  play->add_option("SCENARIO", options->scenarios, "Scenarios, JSON files")->required();
  addValue(*play, "--log", options->log, "Write the log to this file, \"-\" for standard output")
      ->type_name(kFile);
  addValue(*play, "--plugin", options->plugin, "The plug-in to load: a module or a bundle")
      ->type_name(kFile);
  play->add_flag("--summary", options->summary,
                 "Print a summary; a log is then written only with --log");
  play->add_flag("--text", options->text,
                 "Print the log for people, a line for each event; in JSON only with --log");
  addValue(*play, "--report", options->report,
           "Write a page of HTML that shows what happened; a log is then written only with --log")
      ->type_name(kFile);
  play->add_flag("--quiet", options->quiet, "Show no progress");
  addTimeout(*play, options->timeout, "one step");
  play->footer(kPlayHelp);
  play->callback([options, &action] {
    const bool isShown = options->summary || options->text || !options->report.empty();
    if (options->log.empty() && !isShown) options->log = "-";
    action = [options] { return runPlay(*options); };
  });
}

/// A number of pictures.
std::uint64_t framesOf(const std::string& text) {
  constexpr std::uint64_t kMost = 1'000'000;
  std::uint64_t frames = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, frames);
  if (error == std::errc() && stop == end && frames >= 1 && frames <= kMost) return frames;
  throw BadCommandLine(
      fmt::format("--frames {}: must be a whole number from 1 to {}", printable(text), kMost));
}

constexpr char kLiveHelp[] = R"(
Hold the arrow keys to slide the cap, W and S to push and pull it, A and D to
twist it; R, F, Q and E tilt it. Or pull the picture of the cap with the mouse,
or use any joystick, gamepad or 3D mouse. The mouse over the document is the
host's, and its clicks are those that the plug-in may hold back.

Each time the plug-in is loaded anew, a further recording begins: FILE-2, and so
on.

Exit status: 0 if the window was closed, 2 if there is no display or the plug-in
cannot be loaded, 3 after a misuse, 4 if the plug-in broke.)";

void addLive(CLI::App& app, Command& action) {
  auto options = std::make_shared<LiveOptions>();
  CLI::App* live =
      app.add_subcommand("live", "Open a window in which the plug-in is driven by hand");
  CLI::Option* scenario =
      live->add_option("SCENARIO", options->scenario, "A scenario whose set-up the host has");
  addValue(*live, "--plugin", options->plugin, "The plug-in to load: a module or a bundle")
      ->type_name(kFile);
  addValue(*live, "--record", options->record, "Write what was done to this file, as a scenario")
      ->type_name(kFile);
  addValue(*live, "--log", options->log, "Write the log to this file")->type_name(kFile);
  live->add_flag("--demo", options->demo, "Play the scenario's steps, too");
  live->add_option_function<std::string>(
          "--frames", [options](const std::string& text) { options->frames = framesOf(text); },
          "Show so many pictures, 60 for each second of virtual time, and close the window")
      ->type_name("NUMBER");
  addValue(*live, "--screenshot", options->screenshot, "Write the last picture to this PNG file")
      ->type_name(kFile);
  addValue(*live, "--status", options->status,
           "Write a line in JSON for each thing that happens in the window to this file or pipe")
      ->type_name(kFile);
  addTimeout(*live, options->timeout, "one step");
  live->footer(kLiveHelp);
  live->callback([options, scenario, &action] {
    if (options->demo && scenario->empty()) throw CLI::RequiredError("SCENARIO");
    action = [options] { return runLive(*options); };
  });
}

void addReport(CLI::App& app, Command& action) {
  auto files = std::make_shared<std::array<std::string, 2>>();
  CLI::App* report = app.add_subcommand("report", "Make the report of a log that was kept");
  report->add_option("LOG", files->front(), "A log of mrvsim play")->required();
  report->add_option("FILE", files->back(), "The file for the page of HTML")->required();
  report->callback(
      [files, &action] { action = [files] { return runReport(files->front(), files->back()); }; });
}

void addDump(CLI::App& app, Command& action) {
  auto options = std::make_shared<DumpOptions>();
  CLI::App* dump = app.add_subcommand(
      "dump", "Write source text that rebuilds descriptors and plays events with them");
  dump->add_option("DESCRIPTOR", options->input, "A descriptor in JSON, or an action file (.atn)")
      ->required();
  CLI::Option* file =
      dump->add_option("FILE", options->file, "The file for the text, which is appended to it");
  addValue(*dump, "--event", options->event, "The ID of the event to play")->default_str("setd");
  addValue(*dump, "--set", options->steps.set, "Dump an action file's set of this name only");
  addValue(*dump, "--action", options->steps.action, "Dump this action only");
  addValue(*dump, "--step", options->steps.step, "Dump this step only");
  dump->add_flag("--ready", options->ready,
                 "Write one source file that compiles as it is, and replace FILE by it");
  dump->add_flag("--list", options->list, "Print what the file holds, and write nothing");
  dump->add_flag("--quiet", options->quiet, "Show no progress");
  dump->add_option_function<std::string>(
          "--max-size", [options](const std::string& text) { options->maxSize = bytesOf(text); },
          "The longest text to write, in bytes: 4096, 500k, 100M, 2G (default 100M)")
      ->type_name("SIZE");
  dump->footer(kDescriptorHelp);
  dump->callback([options, file, &action] {
    if (!options->list && file->empty()) throw CLI::RequiredError("FILE");
    action = [options] { return runDump(*options); };
  });
}

void addCheck(CLI::App& app, Command& action) {
  auto options = std::make_shared<CheckOptions>();
  CLI::App* check = app.add_subcommand("check", "Judge a built plug-in");
  CLI::Option* file = check->add_option("FILE", options->plugin, "A bundle or a module");
  check->add_flag("--list", options->list, "List the checks, and check nothing");
  check->add_flag("--json", options->json, "Print one JSON object");
  check->add_option("--only", options->only, "Run this check alone; may be repeated")
      ->type_name("NAME")
      ->allow_extra_args(false);
  addTimeout(*check, options->timeout, "one check");
  check->callback([options, file, &action] {
    if (!options->list && file->empty()) throw CLI::RequiredError("FILE");
    action = [options] { return runCheck(*options); };
  });
}

void addValidate(CLI::App& app, Command& action) {
  auto files = std::make_shared<std::vector<std::string>>();
  CLI::App* validate = app.add_subcommand(
      "validate", "Read scenarios, descriptors and action files without playing them");
  validate->add_option("FILE", *files, "Scenarios, descriptors (JSON) and action files (.atn)")
      ->required();
  validate->callback([files, &action] { action = [files] { return runValidate(*files); }; });
}

void addList(CLI::App& app, Command& action) {
  auto what = std::make_shared<std::string>();
  CLI::App* list = app.add_subcommand("list", "Print the names that scenarios may use");
  list->add_option("WHAT", *what, "The kind of names")
      ->required()
      ->type_name(fmt::format("{}", fmt::join(listables(), "|")));
  list->callback([what, &action] { action = [what] { return runList(*what); }; });
}

void addCommands(CLI::App& app, Command& action) {
  app.require_subcommand(1);
  app.fallthrough(false);
  app.set_version_flag("--version", kVersion);
  addPlay(app, action);
  addLive(app, action);
  addReport(app, action);
  addDump(app, action);
  addCheck(app, action);
  addValidate(app, action);
  addList(app, action);
}

std::vector<std::string> wordsOf(const std::string& typeName) {
  std::vector<std::string> words;
  if (typeName.find('|') == std::string::npos) return words;
  std::istringstream stream(typeName);
  for (std::string word; std::getline(stream, word, '|');) words.push_back(word);
  return words;
}

OptionDescription describeOption(const CLI::Option& option) {
  const bool isArgument = option.get_positional();
  OptionDescription description;
  description.name = isArgument ? option.get_name() : "--" + option.get_lnames().front();
  description.words = wordsOf(option.get_type_name());
  if (isArgument) {
    description.value = description.name;
  } else if (option.get_items_expected_max() > 0) {
    description.value = option.get_type_name();
  }
  description.help = option.get_description();
  description.isFile = isArgument ? description.words.empty() : description.value == kFile;
  description.isRequired = option.get_required();
  description.isRepeated = option.get_items_expected_max() > 1;
  return description;
}

std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App*) { return true; });
}

std::vector<std::string> commandNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* command : commandsOf(app)) names.push_back(command->get_name());
  return names;
}

std::vector<std::string> optionNames(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

/// The command that was given; the whole program if none was.
const CLI::App& givenCommand(const CLI::App& app) {
  const auto given = app.get_subcommands();
  return given.empty() ? app : *given.front();
}

std::string prefixOf(const CLI::App& command) {
  return command.get_parent() == nullptr ? "" : command.get_name() + ": ";
}

/// What is wrong with arguments that the command does not take.
std::string describeExtras(const CLI::App& command, const std::vector<std::string>& extras) {
  const auto option = std::find_if(extras.begin(), extras.end(),
                                   [](const auto& text) { return text.starts_with('-'); });
  if (option == extras.end()) {
    return fmt::format("\"{}\" is one argument too many", printable(extras.front()));
  }
  const std::string name = option->substr(0, option->find('='));
  const std::vector<std::string> allowed = optionNames(command);
  return fmt::format("there is no option {}{}; allowed: {}", printable(name), guess(name, allowed),
                     listed(allowed));
}

/// The parser's messages begin with the name of the option that they are about.
std::string optionIn(const CLI::ParseError& error) {
  const std::string message = error.what();
  return printable(message.substr(0, message.find_first_of(": ")));
}

std::string reasonOf(const CLI::App& app, const CLI::ParseError& error) {
  const CLI::App& command = givenCommand(app);
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
    return describeExtras(command, command.remaining());
  }
  if (command.get_parent() == nullptr) {
    return "a command is needed; allowed: " + listed(commandNames(app));
  }
  if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
    return optionIn(error) + " is missing";
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    const bool tooMany = std::string_view(error.what()).find("received") != std::string::npos;
    return optionIn(error) + (tooMany ? " may be given once only" : " needs a value");
  }
  return "an option that takes no value was given one";
}

std::string describe(const CLI::App& app, const CLI::ParseError& error) {
  const CLI::App& command = givenCommand(app);
  const std::string help = command.get_parent() == nullptr
                               ? "mrvsim --help"
                               : fmt::format("mrvsim {} --help", command.get_name());
  return fmt::format("{}{}; see {}", prefixOf(command), reasonOf(app, error), help);
}

/// Throws if the first argument is neither a command nor an option of the program itself.
void expectKnown(const CLI::App& app, const std::string& first) {
  const bool isOption = first.starts_with('-');
  const std::vector<std::string> names = isOption ? optionNames(app) : commandNames(app);
  const bool isKnown = std::find(names.begin(), names.end(), first) != names.end();
  if (isKnown || first == "-h") return;
  throw BadCommandLine(fmt::format("there is no {} \"{}\"{}; allowed: {}",
                                   isOption ? "option before a command" : "command",
                                   printable(first), guess(first, names), listed(names)));
}

/// An empty name is most likely a variable of a shell that is not set.
void expectNoEmptyName(const CLI::App& app) {
  const CLI::App& command = givenCommand(app);
  for (const CLI::Option* option : command.get_options()) {
    const std::vector<std::string>& values = option->results();
    if (std::find(values.begin(), values.end(), "") == values.end()) continue;
    throw BadCommandLine(
        fmt::format("{}{} must not be empty", prefixOf(command), option->get_name()));
  }
}

}  // namespace

std::vector<CommandDescription> describeCommands() {
  CLI::App app;
  Command action;
  addCommands(app, action);
  std::vector<CommandDescription> commands;
  for (const CLI::App* command : commandsOf(app)) {
    commands.push_back(
        {command->get_name(), command->get_description(), command->get_footer(), {}, {}});
    for (const CLI::Option* option : command->get_options()) {
      auto& group = option->get_positional() ? commands.back().arguments : commands.back().options;
      group.push_back(describeOption(*option));
    }
  }
  return commands;
}

std::function<int()> parseCommandLine(std::vector<std::string> arguments) {
  CLI::App app("A simulated Mac, host and device for the plug-in to run in", "mrvsim");
  Command action;
  addCommands(app, action);
  if (!arguments.empty()) expectKnown(app, arguments.front());
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(arguments);
  } catch (const CLI::CallForVersion& version) {
    const std::string text = std::string(version.what()) + "\n";
    return [text] { return print(text); };
  } catch (const CLI::CallForHelp&) {
    const std::string text = app.help();
    return [text] { return print(text); };
  } catch (const CLI::ParseError& error) {
    throw BadCommandLine(describe(app, error));
  }
  expectNoEmptyName(app);
  return action;
}

}  // namespace simulator
