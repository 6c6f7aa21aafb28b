#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "mrvsim/live/ScenarioJson.h"
#include "simulator/scenario/ScenarioReader.h"

namespace {

using namespace simulator;
using live::kindOf;
using live::setupJson;
using live::stepJson;

/// The text of a scenario that holds the same.
std::string textOf(const Scenario& scenario) {
  Json json = setupJson(scenario);
  json["steps"] = Json::array();
  for (const Step& step : scenario.steps) json["steps"].push_back(stepJson(step));
  return json.dump();
}

Scenario readAll(const std::string& name) {
  const ScenarioFile file(name);
  Scenario scenario = file.setup();
  file.eachStep([&](const Step& step, const StepPlace&) { scenario.steps.push_back(step); });
  return scenario;
}

TEST(ScenarioJson, IsReadAsTheScenarioThatItWasWrittenFrom) {
  std::set<std::string> kinds;
  std::size_t scenarios = 0;
  for (const auto& entry : std::filesystem::directory_iterator(MRV_SCENARIOS)) {
    if (entry.path().extension() != ".json") continue;
    const Scenario scenario = readAll(entry.path().string());
    const std::string text = textOf(scenario);
    EXPECT_EQ(textOf(parseScenario(text, "again")), text) << entry.path();
    ASSERT_EQ(parseScenario(text, "again").steps.size(), scenario.steps.size());
    for (const Step& step : scenario.steps) kinds.insert(kindOf(stepJson(step)));
    ++scenarios;
  }
  EXPECT_GE(scenarios, 30U);
  // Buttons and commands are written as messages.
  for (const std::string& name : stepNames()) {
    const bool isMessage = name == "button" || name == "command";
    EXPECT_TRUE(isMessage || kinds.contains(name)) << name;
  }
}

TEST(ScenarioJson, WritesEveryFieldOfAnUnusualMessage) {
  const std::string step = R"({"at":3,"message":{"type":"abcd","command":7,"value":4294967295,)"
                           R"("axes":[1,-2,3,-4,5,-6],"button":9,"client":8}})";
  const Scenario scenario = parseScenario(R"({"steps": [)" + step + "]}", "s");
  EXPECT_EQ(stepJson(scenario.steps.at(0)).dump(), step);
}

TEST(ScenarioJson, NamesActionFilesByTheirWholePaths) {
  Scenario scenario;
  scenario.host.actions = {"a/b.atn"};
  const std::string whole = std::filesystem::absolute("a/b.atn").string();
  EXPECT_EQ(setupJson(scenario)["host"]["actions"], Json({whole}));
}

}  // namespace
