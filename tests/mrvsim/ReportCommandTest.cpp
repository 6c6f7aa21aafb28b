// The report of a play and of its log: the same page, with any other output beside it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/support/Process.h"

namespace {

using testing_support::Finished;
using testing_support::readFile;
using testing_support::run;
using testing_support::TemporaryFolder;

/// A file in the folder of the scenarios.
std::string scenarioFile(const std::string& name) { return MRV_SCENARIOS "/" + name; }

class ReportOfALog : public testing::TestWithParam<const char*> {};

TEST_P(ReportOfALog, IsTheReportOfThePlay) {
  const TemporaryFolder folder;
  const std::string scenario = scenarioFile(GetParam());
  run({MRVSIM, "play", scenario, "--report", folder.file("played"), "--log", folder.file("log")});
  const Finished made = run({MRVSIM, "report", folder.file("log"), "-"});
  EXPECT_EQ(made.status, 0);
  EXPECT_EQ(made.errors, "");
  EXPECT_TRUE(made.output == readFile(folder.file("played")));
  EXPECT_LT(made.output.size(), 1000000U);
}

// Between them they hold every kind of line; flight.json is a minute of 100 samples a second.
INSTANTIATE_TEST_SUITE_P(, ReportOfALog,
                         testing::Values("flight.json", "clicks.json", "framework-refuses.json",
                                         "messages-filtered.json", "preferences-missing.json",
                                         "suite-refused.json", "window-closed.json"),
                         [](const auto& test) {
                           std::string name(test.param, std::string_view(test.param).find('.'));
                           for (char& c : name) c = c == '-' ? '_' : c;
                           return name;
                         });

TEST(ReportCommand, ReadsStandardInput) {
  const TemporaryFolder folder;
  const std::string log = scenarioFile("view.expected.jsonl");
  const Finished piped = run({"bash", "-c", "cat " + log + " | " MRVSIM " report - -"});
  EXPECT_EQ(piped.status, 0);
  EXPECT_FALSE(piped.output.empty());
  EXPECT_TRUE(piped.output == run({MRVSIM, "report", log, "-"}).output);
}

TEST(ReportCommand, ShowsSeveralPlaysOfOneLog) {
  const TemporaryFolder folder;
  const std::string scenario = scenarioFile("view.json");
  run({MRVSIM, "play", scenario, scenario, "--report", folder.file("played"), "--log",
       folder.file("log")});
  const std::string page = run({MRVSIM, "report", folder.file("log"), "-"}).output;
  EXPECT_TRUE(page == readFile(folder.file("played")));
  EXPECT_GT(page.size(), run({MRVSIM, "play", scenario, "--report", "-"}).output.size());
}

TEST(PlayCommandReport, GoesTogetherWithAllOtherOutputs) {
  const TemporaryFolder folder;
  const std::string scenario = scenarioFile("clicks.json");
  const Finished played = run({MRVSIM, "play", scenario, "--text", "--summary", "--log",
                               folder.file("log"), "--report", folder.file("page")});
  EXPECT_EQ(played.status, 0);
  EXPECT_EQ(played.output, readFile(scenarioFile("clicks.expected.txt")) + "\n" +
                               readFile(scenarioFile("clicks.expected.summary")));
  EXPECT_EQ(readFile(folder.file("log")), readFile(scenarioFile("clicks.expected.jsonl")));
  EXPECT_TRUE(readFile(folder.file("page")) ==
              run({MRVSIM, "play", scenario, "--report", "-"}).output);
}

TEST(PlayCommandReport, AloneLeavesStandardOutputEmpty) {
  const TemporaryFolder folder;
  const Finished played =
      run({MRVSIM, "play", scenarioFile("clicks.json"), "--report", folder.file("page")});
  EXPECT_EQ(played.output, "");
  EXPECT_THAT(readFile(folder.file("page")), testing::StartsWith("<!doctype html>"));
}

}  // namespace
