#include "simulator/check/Session.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "simulator/base/Faults.h"
#include "simulator/check/ChildProcess.h"
#include "simulator/check/Progress.h"
#include "simulator/scenario/InputFile.h"
#include "simulator/scenario/OutputCapture.h"
#include "simulator/scenario/Player.h"
#include "simulator/scenario/ScenarioReader.h"

namespace simulator {

const char* const kWholeDay = R"(
  {"call": ["SP Interface", "Startup"]},
  {"active": true},
  {"axes": [0, 40, 0, 0, 0, 0]},
  {"at": 100, "refresh": [[100, 50, 800, 600]]},
  {"axes": [90, 0, 90, 0, 0, 0]},
  {"click": "down"},
  {"click": "up"},
  {"axes": [0, 0, 0, 0, 0, 0]},
  {"at": 200, "refresh": [[100, 50, 800, 600]]},
  {"axes": [0, 0, 0, 0, 400, 0]},
  {"axes": [0, 0, 0, 0, 400, 0]},
  {"axes": [0, 0, 0, 0, 0, 0]},
  {"button": [7, 1]},
  {"button": [7, 0]},
  {"command": 3},
  {"active": false},
  {"axes": [0, 40, 0, 0, 0, 0]},
  {"call": ["SP Interface", "About"]},
  {"call": ["PS Photoshop", "Do It"]},
  {"call": ["SP Interface", "Shutdown"]}
)";

std::vector<Json> Session::of(const std::string& what) const {
  std::vector<Json> found;
  std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
               [&](const Json& line) { return line["what"] == what; });
  return found;
}

std::vector<std::string> Session::misuses() const {
  std::vector<std::string> texts;
  for (const Json& line : of("misuse")) texts.push_back(line["text"]);
  return texts;
}

std::vector<std::uint32_t> Session::results() const {
  std::vector<std::uint32_t> values;
  for (const Json& line : of("result")) values.push_back(line["value"]);
  return values;
}

namespace {

class StepCounter : public PlayerObserver {
 public:
  explicit StepCounter(Progress& progress) : progress_(progress) {}
  void step() override { progress_.beginStep(); }
  void message(const DeviceMessage&, bool, bool) override {}
  void redrawn() override {}

 private:
  Progress& progress_;
};

Json playHere(const std::string& plugin, const std::string& scenario, const TemporaryHome& home,
              Progress& progress) {
  progress.recordUncaughtExceptions();
  const Scenario parsed = parseScenario(scenario, "check");
  const OutputCapture quiet;
  StepCounter counter(progress);
  Json lines = Json::array();
  theLog().setSink([&](const Json& line) { lines.push_back(line); });
  Player player(parsed, home, &counter);
  try {
    player.play(plugin, besideProgram("libMoravinClient.so"));
  } catch (const TemporaryFileError&) {
    throw;
  } catch (...) {
    // Before the first step it is the loader that refuses the file.
    if (progress.steps() == 0) throw;
    throw std::runtime_error(currentExceptionText());
  }
  theLog().setSink({});
  return {{"lines", lines}, {"faultsFired", theFaults().fired() > 0}};
}

// Where a play ended: "in step 2, {"call":["SP Interface","Startup"]}".
std::string placeOf(const Progress& progress, const std::string& scenario) {
  const Json steps = jsonOf(scenario)["steps"];
  const std::size_t step = progress.steps();
  if (step == 0) return "while it was loaded";
  const std::string place = fmt::format("in step {}, {}", step, steps[step - 1].dump());
  return step < steps.size() ? place : place + ", or while it was unloaded after it";
}

}  // namespace

Session playSession(const std::string& plugin, const std::string& scenario) {
  const TemporaryHome home;
  Progress progress;
  try {
    const Json answer = inChildProcess([&] { return playHere(plugin, scenario, home, progress); });
    return {answer["lines"].get<std::vector<Json>>(), answer["faultsFired"]};
  } catch (const TemporaryFileError&) {
    throw;
  } catch (const std::exception& error) {
    const std::string thrown = progress.exception();
    throw std::runtime_error(
        fmt::format("{}: {}", placeOf(progress, scenario), thrown.empty() ? error.what() : thrown));
  }
}

}  // namespace simulator
