// mrvmac: plays the host for the plug-in's bundle on a real Mac, and reports which beliefs about
// the system hold there.
#import <Foundation/Foundation.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <mach-o/dyld.h>
#include <string>
#include <vector>

#include "mac/HostWindow.h"
#include "mac/InputWatch.h"
#include "mac/Options.h"
#include "mac/Playback.h"
#include "mac/Probes.h"
#include "mac/RealHost.h"
#include "mac/Report.h"
#include "mac/SystemName.h"
#include "simulator/base/Log.h"
#include "simulator/scenario/JsonFile.h"
#include "simulator/scenario/ScenarioReader.h"

namespace mrvmac {
namespace {

constexpr int kCannotRun = 2;
constexpr char kSearchVariable[] = "DYLD_FRAMEWORK_PATH";
constexpr char kRestartedVariable[] = "MRVMAC_RESTARTED";
constexpr double kSettleSeconds = 1.0;

std::string programFile() {
  std::uint32_t size = 0;
  _NSGetExecutablePath(nullptr, &size);
  std::string file(size, '\0');
  _NSGetExecutablePath(file.data(), &size);
  char* const real = realpath(file.c_str(), nullptr);
  if (real == nullptr) throw CannotRun("the program's own file is not known");
  const std::string path = real;
  std::free(real);
  return path;
}

std::string folderOf(const std::string& file) { return file.substr(0, file.rfind('/')); }

/// The loader looks for the device framework beside this program only if the environment says so,
/// and it reads the environment when a program starts.
void restartWithStandIn(const std::string& program, char** arguments) {
  if (std::getenv(kRestartedVariable) != nullptr) return;
  setenv(kSearchVariable, folderOf(program).c_str(), 1);
  setenv(kRestartedVariable, "1", 1);
  execv(program.c_str(), arguments);
  throw CannotRun("the program cannot be started again with the stand-in framework");
}

class Session {
 public:
  Session(const Options& options, const std::string& folder)
      : options_(options),
        scenario_(readPlayable(options.scenario)),
        framework_(folder),
        window_(scenario_.host.redrawDelay.value_or(0)) {
    seen_.expected =
        parseExpectedInputs(simulator::readTextFile(options.expected), options.expected);
    simulator::theLog().setSink([this](const simulator::Json& line) {
      if (line.at("what") == "misuse") seen_.misuses.push_back(line.at("text"));
    });
  }

  const Observations& run() {
    observeSystem();
    window_.handleEvents(kSettleSeconds);
    window_.probe(seen_);
    EventProbes probes(seen_);
    window_.handleEvents(kSettleSeconds);
    probes.report(seen_);
    play();
    window_.report(seen_);
    framework_.report(seen_);
    simulator::theLog().setSink({});
    return seen_;
  }

 private:
  static simulator::Scenario readPlayable(const std::string& file) {
    simulator::Scenario scenario = simulator::parseScenario(simulator::readTextFile(file), file);
    requirePlayable(scenario, file);
    return scenario;
  }

  void observeSystem() {
    seen_.system = systemName();
    seen_.processor = processorName();
    seen_.layout = keyboardLayoutIdentifier();
    seen_.preferencesFolder = preferencesFolderPath();
    seen_.permission = maySynthesizeInput(options_.ask);
  }

  void play() {
    InputWatch watch;
    seen_.tapInstalled = watch.installed();
    RealHost host(scenario_.host, options_.bundle, seen_);
    NSDate* const start = [NSDate date];
    for (const simulator::Step& step : scenario_.steps) {
      window_.handleEvents(static_cast<double>(step.at) / 1000 + start.timeIntervalSinceNow);
      if (const auto* call = std::get_if<simulator::CallStep>(&step.action)) {
        host.call(*call, seen_);
      } else if (const auto* message = std::get_if<simulator::MessageStep>(&step.action)) {
        framework_.send(message->message, step.at);
      }
    }
    window_.handleEvents(kSettleSeconds);
    observeInput(watch);
  }

  void observeInput(const InputWatch& watch) {
    seen_.atTap = watch.inputs();
    const auto& places = watch.wheelLocations();
    if (places.empty()) return;
    seen_.ticksAreInside = std::all_of(places.begin(), places.end(), [this](CGPoint place) {
      return window_.contains(place.x, place.y);
    });
  }

  const Options& options_;
  const simulator::Scenario scenario_;
  Observations seen_;
  StandInFramework framework_;
  HostWindow window_;
};

void write(const std::string& file, const std::string& text) {
  std::FILE* const stream = std::fopen(file.c_str(), "wb");
  const bool wrote = stream != nullptr && std::fputs(text.c_str(), stream) >= 0;
  const bool closed = stream != nullptr && std::fclose(stream) == 0;
  if (!wrote || !closed) throw CannotRun(file + ": the report cannot be written");
}

int run(int count, char** arguments) {
  const std::string program = programFile();
  const Options options =
      parseOptions(std::vector<std::string>(arguments + 1, arguments + count), folderOf(program));
  if (options.help) {
    std::fputs(help(), stdout);
    return 0;
  }
  restartWithStandIn(program, arguments);
  Session session(options, folderOf(program));
  const Observations& seen = session.run();
  const std::string report = writeReport(seen);
  write(options.report, report);
  std::fputs(report.c_str(), stdout);
  if (!seen.permission.value_or(false)) {
    std::fputs("\nWithout the permission no input arrives. Allow it in the system's settings under "
               "Privacy, Accessibility, for the program from which you start mrvmac, then start it "
               "again.\n",
               stdout);
  }
  return exitStatus(seen);
}

}  // namespace
}  // namespace mrvmac

int main(int count, char** arguments) {
  @autoreleasepool {
    try {
      return mrvmac::run(count, arguments);
    } catch (const std::exception& error) {
      std::fprintf(stderr, "mrvmac: %s\n", error.what());
      return mrvmac::kCannotRun;
    }
  }
}
