#include <gtest/gtest.h>

#include <filesystem>

#include "mrvsim/live/Recording.h"
#include "mrvsim/live/ScenarioJson.h"
#include "simulator/scenario/ScenarioReader.h"
#include "tests/support/Process.h"

namespace {

using namespace simulator;
using live::numberedName;
using live::setupJson;
using testing_support::readFile;

using LiveRecording = live::Recording;

TEST(Recording, NumbersTheFilesAfterTheFirst) {
  EXPECT_EQ(numberedName("a.b/flight.json", 1), "a.b/flight.json");
  EXPECT_EQ(numberedName("a.b/flight.json", 2), "a.b/flight-2.json");
  EXPECT_EQ(numberedName("flight", 12), "flight-12");
}

TEST(Recording, IsAScenarioForEachStartOfThePlugIn) {
  const testing_support::TemporaryFolder folder;
  LiveRecording recording(folder.file("r.json"), folder.file("log"), {});
  Scenario setup;
  setup.host.tool = "lassoTool";
  recording.begin(setupJson(setup));
  recording.step({{"at", 1}, {"active", false}});
  recording.step({{"at", 2}, {"active", true}});
  recording.line("first");
  recording.begin(setupJson(setup));
  recording.line("second");
  recording.commit();
  const Scenario first = parseScenario(readFile(folder.file("r.json")), "r");
  EXPECT_EQ(first.host.tool, "lassoTool");
  EXPECT_EQ(first.steps.size(), 2U);
  EXPECT_TRUE(parseScenario(readFile(folder.file("r-2.json")), "r").steps.empty());
  EXPECT_EQ(readFile(folder.file("log")), "first\n");
  EXPECT_EQ(readFile(folder.file("log-2")), "second\n");
}

TEST(Recording, LeavesFilesAsTheyWereIfItIsNotKept) {
  const testing_support::TemporaryFolder folder;
  testing_support::writeFile(folder.file("r.json"), "before");
  {
    LiveRecording recording(folder.file("r.json"), "", {});
    recording.begin(setupJson({}));
  }
  EXPECT_EQ(readFile(folder.file("r.json")), "before");
}

TEST(Recording, RefusesToReplaceAnInput) {
  const testing_support::TemporaryFolder folder;
  testing_support::writeFile(folder.file("s.json"), "{}");
  EXPECT_THROW(LiveRecording(folder.file("s.json"), "", {folder.file("s.json")}), BadOutput);
}

}  // namespace
