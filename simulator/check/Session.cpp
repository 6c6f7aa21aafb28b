#include "simulator/check/Session.h"

#include <algorithm>
#include <iterator>

#include "simulator/base/Faults.h"
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

Session playSession(const std::string& plugin, const std::string& scenario) {
  const Scenario parsed = parseScenario(scenario, "check");
  const TemporaryHome home;
  const OutputCapture quiet;
  Session session;
  theLog().setSink([&](const Json& line) { session.lines.push_back(line); });
  Player(parsed, home).play(plugin, besideProgram("libMoravinClient.so"));
  theLog().setSink({});
  session.faultsFired = theFaults().fired() > 0;
  return session;
}

}  // namespace simulator
