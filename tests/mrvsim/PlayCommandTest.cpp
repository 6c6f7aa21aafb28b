// Plays every scenario that has an expected log beside it and compares the logs line by line.
//
// After an intended change of behaviour, review the difference and write the log again:
//     mrvsim play NAME.json > NAME.expected.jsonl
// If standard error gets notes, they stand in NAME.expected.notes. A summary that is expected
// stands in NAME.expected.summary:
//     mrvsim play NAME.json --summary > NAME.expected.summary
// and the log for people, where it is expected, in NAME.expected.txt.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "simulator/base/Json.h"
#include "tests/support/Process.h"
#include "tests/support/Scenarios.h"

namespace {

using simulator::Json;
using simulator::jsonOf;
using testing_support::Finished;
using testing_support::readFile;
using testing_support::run;
using testing_support::scenarioName;
using testing_support::scenariosWith;

const std::filesystem::path kScenarios = MRV_SCENARIOS;

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

INSTANTIATE_TEST_SUITE_P(, PlayCommandLog, testing::ValuesIn(scenariosWith(".expected.jsonl")),
                         scenarioName);

/// A misspelt one would never be compared.
TEST(PlayCommandScenarios, ExistForEveryExpectedFile) {
  std::set<std::string> expected;
  for (const char* ending :
       {".expected.jsonl", ".expected.notes", ".expected.summary", ".expected.txt"}) {
    for (const std::string& name : scenariosWith(ending)) expected.insert(name);
  }
  const std::vector<std::string> scenarios = scenariosWith(".json");
  EXPECT_THAT(expected, testing::UnorderedElementsAreArray(scenarios));
}

class PlayCommandSummary : public testing::TestWithParam<std::string> {};

TEST_P(PlayCommandSummary, MatchesTheExpectedSummary) {
  const std::string scenario = (kScenarios / (GetParam() + ".json")).string();
  const Finished played = run({MRVSIM, "play", scenario, "--summary"});
  EXPECT_EQ(played.output, readFile(kScenarios / (GetParam() + ".expected.summary")));
}

INSTANTIATE_TEST_SUITE_P(, PlayCommandSummary,
                         testing::ValuesIn(scenariosWith(".expected.summary")), scenarioName);

class PlayCommandText : public testing::TestWithParam<std::string> {};

TEST_P(PlayCommandText, MatchesTheExpectedText) {
  const std::string scenario = (kScenarios / (GetParam() + ".json")).string();
  const Finished played = run({MRVSIM, "play", scenario, "--text"});
  EXPECT_EQ(played.output, readFile(kScenarios / (GetParam() + ".expected.txt")));
}

INSTANTIATE_TEST_SUITE_P(, PlayCommandText, testing::ValuesIn(scenariosWith(".expected.txt")),
                         scenarioName);

TEST(PlayCommandTextForm, GoesTogetherWithALogAndASummary) {
  const testing_support::TemporaryFolder folder;
  const std::string scenario = (kScenarios / "clicks.json").string();
  const Finished played =
      run({MRVSIM, "play", scenario, "--text", "--summary", "--log", folder.file("log")});
  EXPECT_EQ(played.output, readFile(kScenarios / "clicks.expected.txt") + "\n" +
                               readFile(kScenarios / "clicks.expected.summary"));
  EXPECT_EQ(readFile(folder.file("log")), readFile(kScenarios / "clicks.expected.jsonl"));
}

TEST(PlayCommandTextForm, NamesEachOfSeveralScenarios) {
  const std::string scenario = (kScenarios / "clicks.json").string();
  const std::string text = readFile(kScenarios / "clicks.expected.txt");
  EXPECT_EQ(run({MRVSIM, "play", scenario, scenario, "--text"}).output,
            scenario + ":\n" + text + scenario + ":\n" + text);
}

/// What the command prints on a terminal of that kind; words before it set variables.
std::string onATerminal(const std::string& kind, const std::string& command) {
  return run({"script", "-qec", "env -u NO_COLOR TERM=" + kind + " " + command, "/dev/null"})
      .output;
}

TEST(PlayCommandTextForm, IsColouredOnATerminalUnlessNoColourIsWanted) {
  const std::string command =
      std::string(MRVSIM) + " play " + (kScenarios / "clicks.json").string() + " --text";
  EXPECT_NE(onATerminal("xterm", command).find("\x1B[33m"), std::string::npos);
  EXPECT_EQ(onATerminal("dumb", command).find('\x1B'), std::string::npos);
  const std::string uncoloured = onATerminal("xterm", "NO_COLOR=1 " + command);
  EXPECT_NE(uncoloured.find("click"), std::string::npos);
  EXPECT_EQ(uncoloured.find('\x1B'), std::string::npos);
}

TEST(PlayCommandSummaryWords, StandInTheHelp) {
  const std::string help = run({MRVSIM, "play", "--help"}).output;
  for (const char* word :
       {"sample",  "push or pull",   "slide",        "twist",     "at rest",    "background",
        "motion",  "tick",           "zoom in",      "zoom out",  "pan",        "brush keys",
        "waiting", "without effect", "inferred",     "held back", "brush size", "view's corner",
        "leaked",  "misuse",         "key left down"}) {
    EXPECT_NE(help.find(word), std::string::npos) << word;
  }
}

class PlayCommandMotion : public testing::TestWithParam<const char*> {
 protected:
  std::string file() const { return (kScenarios / GetParam()).string(); }
};

/// The lines of one kind.
std::string linesOfKind(const std::string& log, const std::string& kind) {
  std::istringstream lines(log);
  std::string result;
  for (std::string line; std::getline(lines, line);) {
    if (line.find("\"what\":\"" + kind + '"') != line.npos) result += line + '\n';
  }
  return result;
}

TEST_P(PlayCommandMotion, GivesTheSameLogEveryTimeLeavesNoKeyDownAndPacesTicksByTheRedraw) {
  const Finished played = run({MRVSIM, "play", file()});
  EXPECT_EQ(played.status, 0);
  EXPECT_TRUE(run({MRVSIM, "play", file()}).output == played.output);

  int held = 0;
  for (const Json& line : parseLines(linesOfKind(played.output, "key"))) {
    held += line["down"] ? 1 : -1;
  }
  EXPECT_EQ(held, 0);

  const auto scenario = jsonOf(readFile(file()));
  const int delay = scenario["host"]["redrawDelay"];
  std::int64_t lastTick = -delay;
  for (const Json& line : parseLines(linesOfKind(played.output, "wheel"))) {
    EXPECT_GE(line["t"].get<std::int64_t>() - lastTick, delay);
    lastTick = line["t"];
  }
  EXPECT_GT(lastTick, 0);
}

INSTANTIATE_TEST_SUITE_P(, PlayCommandMotion, testing::Values("flight.json", "brush.json"),
                         [](const auto& test) {
                           return std::string(test.param, std::string_view(test.param).find('.'));
                         });

}  // namespace
