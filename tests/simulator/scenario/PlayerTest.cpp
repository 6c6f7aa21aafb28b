// Whole scenarios in this process, with the device's thread in it.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "simulator/base/Log.h"
#include "simulator/scenario/OutputCapture.h"
#include "simulator/scenario/Player.h"
#include "simulator/scenario/ScenarioReader.h"
#include "tests/support/Process.h"

namespace {

using namespace simulator;

/// The names of the scenarios whose log is kept, without extension.
std::vector<std::string> scenariosWithLog() {
  const std::string extension = ".expected.jsonl";
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(MRV_SCENARIOS)) {
    const std::string name = entry.path().filename().string();
    if (name.ends_with(extension)) names.push_back(name.substr(0, name.size() - extension.size()));
  }
  std::sort(names.begin(), names.end());
  return names;
}

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

INSTANTIATE_TEST_SUITE_P(, PlayerLog, testing::ValuesIn(scenariosWithLog()), [](const auto& test) {
  std::string name = test.param;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
});

TEST(PlayerLogs, AreKeptForAtLeastEighteenScenarios) { EXPECT_GE(scenariosWithLog().size(), 18U); }

}  // namespace
