// Whole scenarios in this process, with the device's thread in it.
#include <gmock/gmock.h>

#include <string>

#include "simulator/base/Log.h"
#include "simulator/scenario/OutputCapture.h"
#include "simulator/scenario/Player.h"
#include "simulator/scenario/ScenarioReader.h"
#include "tests/support/Process.h"
#include "tests/support/Scenarios.h"

namespace {

using namespace simulator;
using testing_support::scenarioName;
using testing_support::scenariosWith;

class PlayerLog : public testing::TestWithParam<std::string> {
 protected:
  std::string path(const char* extension) const {
    return MRV_SCENARIOS "/" + GetParam() + extension;
  }
};

TEST_P(PlayerLog, MatchesTheExpectedLog) {
  const ScenarioFile scenario(path(".json"));
  const TemporaryHome home;
  OutputCapture capture;
  const auto printed = [&](std::string text) {
    const std::string folder = home.path().string();
    if (const auto at = text.find(folder); at != text.npos) text.replace(at, folder.size(), "~");
    theLog().write("printed", {{"text", text}});
  };
  theLog().setPrelude([&] { capture.drain(printed); });
  std::string log;
  theLog().setSink([&](const LogLine& line) {
    line.appendTo(log);
    log += '\n';
  });

  Player player(scenario.setup(), home);
  player.load(MODULE, FRAMEWORK);
  scenario.eachStep([&](const Step& step, const StepPlace&) { player.take(step); });
  player.unload();
  capture.finish(printed);
  theLog().setPrelude({});
  theLog().setSink({});
  EXPECT_EQ(log, testing_support::readFile(path(".expected.jsonl")));
}

INSTANTIATE_TEST_SUITE_P(, PlayerLog, testing::ValuesIn(scenariosWith(".expected.jsonl")),
                         scenarioName);

/// Their logs would be long; they have a summary instead.
TEST(PlayerLogs, AreKeptForEveryScenarioButTheLongOnes) {
  std::vector<std::string> kept = scenariosWith(".expected.jsonl");
  kept.insert(kept.end(), {"brush", "flight"});
  EXPECT_THAT(scenariosWith(".json"), testing::UnorderedElementsAreArray(kept));
}

}  // namespace
