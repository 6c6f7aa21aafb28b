#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "simulator/scenario/ScenarioReader.h"
#include "tests/support/Process.h"

namespace {

using namespace simulator;

class ScenarioReader : public testing::Test {
 protected:
  std::string write(const std::string& text) {
    testing_support::writeFile(folder_.file("s.json"), text);
    return folder_.file("s.json");
  }

  testing_support::TemporaryFolder folder_;
};

TEST_F(ScenarioReader, ReadsTheSameStepsAgainEachTime) {
  const ScenarioFile file(write(R"({"steps": [{"at": 3, "active": true},
  {"axes": [1, 2, 3, 4, 5, 6]}], "host": {"tool": "lassoTool"}})"));
  EXPECT_EQ(file.setup().host.tool, "lassoTool");
  EXPECT_TRUE(file.setup().steps.empty());
  for (int time = 0; time < 2; ++time) {
    std::vector<std::string> places;
    std::vector<std::int64_t> times;
    file.eachStep([&](const Step& step, const StepPlace& place) {
      times.push_back(step.at);
      places.push_back(std::to_string(place.index) + " " + std::to_string(place.position.line) +
                       ":" + std::to_string(place.position.column) + " " + place.kind);
    });
    EXPECT_THAT(times, testing::ElementsAre(3, 3));
    EXPECT_THAT(places, testing::ElementsAre("0 1:12 active", "1 2:3 axes"));
  }
}

TEST_F(ScenarioReader, SeesAFileThatHasBecomeFaulty) {
  const ScenarioFile file(write(R"({"steps": [{"active": true}]})"));
  write(R"({"steps": [{"active": 1}]})");
  EXPECT_THROW(file.eachStep([](const Step&, const StepPlace&) {}), BadScenario);
}

TEST_F(ScenarioReader, NotesAnUnknownNameOnceAndTenAtMost) {
  std::string steps;
  for (int i = 0; i < 30; ++i) {
    steps += R"({"tool": "tool)" + std::to_string(i) + R"("}, {"tool": "sameTool"}, )";
  }
  const ScenarioFile file(write(R"({"steps": [)" + steps + R"({"active": true}]})"));
  EXPECT_EQ(file.notes().size(), 10U);
  EXPECT_EQ(std::count_if(file.notes().begin(), file.notes().end(),
                          [](const auto& note) { return note.find("same") != note.npos; }),
            1);
}

TEST_F(ScenarioReader, NotesNothingAboutKnownNames) {
  EXPECT_THAT(ScenarioFile(write(R"({"layout": "com.apple.keylayout.German",
    "host": {"tool": "eraserTool"}, "steps": [{"call": ["PS Photoshop", "Do It"]}]})"))
                  .notes(),
              testing::IsEmpty());
}

TEST_F(ScenarioReader, ReadsEveryScenarioOfTheProject) {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(MRV_SCENARIOS)) {
    if (entry.path().extension() != ".json") continue;
    EXPECT_NO_THROW(ScenarioFile(entry.path().string())) << entry.path();
    ++count;
  }
  EXPECT_GE(count, 18);
}

TEST(ScenarioReaderNames, IncludeEveryKindOfStep) {
  EXPECT_THAT(stepNames(), testing::IsSupersetOf({"axes", "call", "fail", "window"}));
}

}  // namespace
