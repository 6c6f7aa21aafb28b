// mrvsim: runs the plug-in in a simulated Mac with a simulated host and device.
#include <CLI/CLI.hpp>

#include "mrvsim/CheckCommand.h"
#include "mrvsim/DumpCommand.h"
#include "mrvsim/PlayCommand.h"

namespace {

void addPlay(CLI::App& app, int& status) {
  auto options = std::make_shared<simulator::PlayOptions>();
  CLI::App* play = app.add_subcommand("play", "Play a scenario and write what the plug-in does");
  play->add_option("SCENARIO", options->scenario, "The scenario, a JSON file")->required();
  play->add_option("--log", options->log, "Write the log to this file, not to standard output");
  play->add_option("--plugin", options->plugin, "The plug-in's module to load");
  play->add_flag("--summary", options->summary,
                 "Print a summary; a log goes to the file of --log only");
  play->callback([options, &status] { status = simulator::runPlay(*options); });
}

void addDump(CLI::App& app, int& status) {
  auto options = std::make_shared<simulator::DumpOptions>();
  CLI::App* dump = app.add_subcommand(
      "dump", "Append source text that rebuilds a descriptor and plays an event with it");
  dump->add_option("DESCRIPTOR", options->descriptor, "The descriptor, a JSON file")->required();
  dump->add_option("FILE", options->file, "The file to append to")->required();
  dump->add_option("--event", options->event, "The ID of the event to play")->capture_default_str();
  dump->footer(simulator::kDescriptorHelp);
  dump->callback([options, &status] { status = simulator::runDump(*options); });
}

void addCheck(CLI::App& app, int& status) {
  auto options = std::make_shared<simulator::CheckOptions>();
  CLI::App* check = app.add_subcommand("check", "Judge a built plug-in");
  CLI::Option* file = check->add_option("FILE", options->plugin, "A bundle or a module");
  check->add_flag("--list", options->list, "Tell what is checked, and check nothing");
  check->add_flag("--json", options->json, "Print one JSON object");
  check->add_option("--only", options->only, "Run this check alone; may be repeated");
  check->callback([options, file, &status] {
    if (!options->list && file->empty()) throw CLI::RequiredError("FILE");
    status = simulator::runCheck(*options);
  });
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("A simulated Mac, host and device for the plug-in to run in");
  app.require_subcommand(1);
  int status = 0;
  addPlay(app, status);
  addDump(app, status);
  addCheck(app, status);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    constexpr int kBadUsage = 2;
    return app.exit(error) == 0 ? 0 : kBadUsage;
  }
  return status;
}
