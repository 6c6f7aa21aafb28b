#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "simulator/scenario/ScenarioReader.h"
#include "tests/support/Process.h"
#include "tests/support/Scenarios.h"

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

/// Steps and their places, or the fault.
std::string readingOf(const std::string& steps) {
  std::string text;
  try {
    const Scenario scenario = parseScenario("{\"steps\": [" + steps + "]}", "s");
    for (const Step& step : scenario.steps) {
      text += std::to_string(step.at);
      const auto* sample = std::get_if<MessageStep>(&step.action);
      if (sample == nullptr) continue;
      for (const auto axis : sample->message.axes) text += " " + std::to_string(axis);
      text += ";";
    }
  } catch (const BadScenario& bad) {
    return bad.what();
  }
  return text;
}

TEST(ScenarioReaderSamples, AreReadAlikeInEveryForm) {
  const std::string first = R"({"at": 5, "axes": [0, 0, 0, 0, 0, 0]},)";
  const std::string last = R"({"at": 99, "axes": [0, 0, 0, 0, 0, 0]})";
  const auto reading = [&](const std::string& sample) { return readingOf(first + sample + last); };
  const std::string read = reading(R"({"at": 7, "axes": [1, -2, 32767, -32768, 0, 6]},)");
  EXPECT_EQ(read, "5 0 0 0 0 0 0;7 1 -2 32767 -32768 0 6;99 0 0 0 0 0 0;");
  EXPECT_EQ(reading(R"({"axes": [1, -2, 32767, -32768, 0, 6], "at": 7},)"), read);
  EXPECT_EQ(reading("\n { \"at\"\t:7,\"axes\" :[1 ,-2,32767,-32768,0,6\n] }\r\n,"), read);
  EXPECT_EQ(reading(R"({"at": 7.0, "axes": [1, -2, 32767, -32768, -0, 6e0]},)"), read);
}

TEST(ScenarioReaderSamples, HaveTheFaultsOfEveryOtherStep) {
  // The last step is always left to the parser.
  const auto fault = [](const std::string& sample) {
    const std::string before = R"({"at": 5, "axes": [0, 0, 0, 0, 0, 0]},)" + sample;
    const std::string reading = readingOf(before + "," + R"({"axes": [0, 0, 0, 0, 0, 0]})");
    EXPECT_EQ(reading, readingOf(before));
    return reading;
  };
  EXPECT_EQ(fault(R"({"at": 4, "axes": [1, 2, 3, 4, 5, 6]})"),
            "s:1:57: /steps/1/at: must not be less than 5, that of the step before");
  EXPECT_EQ(fault(R"({"at": 05, "axes": [1, 2, 3, 4, 5, 6]})").substr(0, 7), "s:1:59:");
  EXPECT_EQ(fault(R"({"at": 7, "axes": [1, 2, 3, 4, 5, -01]})").substr(0, 7), "s:1:87:");
  EXPECT_EQ(fault(R"({"at": 7, "axes": [1, 2, 3, 4, 5, 32768]})"),
            "s:1:84: /steps/1/axes/5: must be from -32768 to 32767");
  EXPECT_EQ(fault(R"({"at": 7, "axes": [1, 2, 3, 4, 5]})"),
            "s:1:68: /steps/1/axes: must be six integers");
  EXPECT_EQ(fault(R"({"at": 7, "axes": [1, 2, 3, 4, 5, 6], "at": 8})"),
            "s:1:88: the key \"at\" stands twice in one object");
  EXPECT_EQ(fault(R"({"at": 9223372036855, "axes": [1, 2, 3, 4, 5, 6]})"),
            "s:1:57: /steps/1/at: must be from 0 to 9223372036854");
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
  const std::vector<std::string> names = testing_support::scenariosWith(".json");
  EXPECT_THAT(names, testing::IsSupersetOf({"brush", "flight", "pan", "zoom"}));
  for (const std::string& name : names) {
    EXPECT_NO_THROW(ScenarioFile(testing_support::scenarioFile(name))) << name;
  }
}

TEST(ScenarioReaderNames, IncludeEveryKindOfStep) {
  EXPECT_THAT(stepNames(), testing::IsSupersetOf({"axes", "call", "fail", "window"}));
}

}  // namespace
