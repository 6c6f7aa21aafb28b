// Plays every scenario that has an expected log beside it and compares the logs line by line.
//
// After an intended change of behaviour, review the difference and write the log again:
//     mrvsim play NAME.json > NAME.expected.jsonl
// If standard error gets notes, they stand in NAME.expected.notes.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "simulator/base/Json.h"
#include "tests/support/Process.h"

namespace {

using simulator::Json;
using simulator::jsonOf;
using testing_support::Finished;
using testing_support::readFile;
using testing_support::run;

const std::filesystem::path kScenarios = MRV_SCENARIOS;

std::vector<std::string> scenarioNames() {
  std::vector<std::string> names;
  const std::string ending = ".expected.jsonl";
  for (const auto& entry : std::filesystem::directory_iterator(kScenarios)) {
    const std::string name = entry.path().filename().string();
    if (name.ends_with(ending)) names.push_back(name.substr(0, name.size() - ending.size()));
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<Json> parseLines(const std::string& text) {
  std::vector<Json> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(jsonOf(line));
  return lines;
}

/// The text with the scenarios' folder removed from all paths.
std::string withoutFolder(std::string text) {
  const std::string folder = kScenarios.string() + "/";
  for (std::size_t at; (at = text.find(folder)) != std::string::npos;)
    text.erase(at, folder.size());
  return text;
}

class PlayCommandLog : public testing::TestWithParam<std::string> {};

TEST_P(PlayCommandLog, MatchesTheExpectedLog) {
  const std::string scenario = (kScenarios / (GetParam() + ".json")).string();
  const Finished played = run({MRVSIM, "play", scenario});
  SCOPED_TRACE(std::string("to see it: ") + MRVSIM + " play " + scenario);
  const auto log = parseLines(played.output);
  const auto expected = parseLines(readFile(kScenarios / (GetParam() + ".expected.jsonl")));
  ASSERT_FALSE(expected.empty());
  for (std::size_t i = 0; i < std::min(log.size(), expected.size()); ++i) {
    ASSERT_EQ(log[i], expected[i]) << "at line " << i + 1;
  }
  EXPECT_EQ(log.size(), expected.size());
  const auto isMisuse = [](const Json& line) { return line["what"] == "misuse"; };
  const bool misused = std::any_of(expected.begin(), expected.end(), isMisuse);
  EXPECT_EQ(played.status, misused ? 3 : 0);
  EXPECT_EQ(withoutFolder(played.errors), readFile(kScenarios / (GetParam() + ".expected.notes")));
}

INSTANTIATE_TEST_SUITE_P(, PlayCommandLog, testing::ValuesIn(scenarioNames()),
                         [](const auto& test) {
                           std::string name = test.param;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

TEST(PlayCommandScenarios, IncludeAtLeastEighteenExpectedLogs) {
  EXPECT_GE(scenarioNames().size(), 18U);
}

class PlayCommandMotion : public testing::TestWithParam<const char*> {
 protected:
  std::string file() const { return (kScenarios / GetParam()).string(); }
};

TEST_P(PlayCommandMotion, GivesTheSameLogEveryTimeWithoutMisuse) {
  const Finished first = run({MRVSIM, "play", file()});
  const Finished second = run({MRVSIM, "play", file()});
  EXPECT_EQ(first.status, 0);
  EXPECT_EQ(first.output, second.output);
}

TEST_P(PlayCommandMotion, LeavesNoKeyDownAndPacesTicksByTheRedraw) {
  const auto scenario = jsonOf(readFile(file()));
  const int delay = scenario["host"]["redrawDelay"];
  int held = 0;
  std::int64_t lastTick = -delay;
  for (const Json& line : parseLines(run({MRVSIM, "play", file()}).output)) {
    if (line["what"] == "key") held += line["down"] ? 1 : -1;
    if (line["what"] != "wheel") continue;
    EXPECT_GE(line["t"].get<std::int64_t>() - lastTick, delay);
    lastTick = line["t"];
  }
  EXPECT_EQ(held, 0);
  EXPECT_GT(lastTick, 0);
}

TEST_P(PlayCommandMotion, HasAReadableSummary) {
  const Finished played = run({MRVSIM, "play", file(), "--summary"});
  EXPECT_EQ(played.status, 0);
  for (const char* row : {"Device samples", "Wheel ticks", "Dropped by pacing", "Clicks held back",
                          "Keys typed", "View at the end"}) {
    EXPECT_NE(played.output.find(row), std::string::npos) << row;
  }
}

INSTANTIATE_TEST_SUITE_P(, PlayCommandMotion, testing::Values("flight.json", "brush.json"),
                         [](const auto& test) {
                           return std::string(test.param, std::string_view(test.param).find('.'));
                         });

TEST(PlayCommandFlight, LastsAMinuteWithEveryKindOfMotion) {
  const auto steps = jsonOf(readFile(kScenarios / "flight.json"))["steps"];
  const auto count = [&](const char* kind) {
    return std::count_if(steps.begin(), steps.end(),
                         [&](const Json& step) { return step.contains(kind); });
  };
  EXPECT_EQ(count("axes"), 6000);
  EXPECT_GE(count("click"), 6);
  EXPECT_EQ(count("active"), 2);
  EXPECT_EQ(steps.back()["at"], 61000);
}

}  // namespace
