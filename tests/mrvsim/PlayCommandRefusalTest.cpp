// `mrvsim play` refuses a scenario that cannot be played with one line on standard error, which
// names the file, the place and the reason, and plays nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "tests/support/Process.h"

namespace {

using testing_support::Finished;
using testing_support::run;
using testing_support::TemporaryFolder;

struct Broken {
  const char* name;
  const char* text;
  const char* place;   ///< part of the line that names the place
  const char* reason;  ///< part of the line that gives the reason
};

void PrintTo(const Broken& broken, std::ostream* stream) { *stream << broken.text; }

const Broken kBroken[] = {
    {"empty_file", "", ":1:1: ", "the document is empty"},
    {"cut_off", R"({"steps": [{"at": 1, "ax)", ":1:25: ", "ends too early"},
    {"trailing_text", "{} {}", ":1:4: ", "something follows the end"},
    {"invalid_utf8", "{\"layout\": \"\xFF\"}", ":1:13: ", "UTF-8"},
    {"list_for_scenario", "[]", "/: ", "must be an object"},
    {"unknown_field", R"({"hosts": {}})", "/hosts: ", "unknown field"},
    {"unknown_host_field", R"({"host": {"versions": [1, 2]}})",
     "/host/versions: ", "unknown field"},
    {"version_of_one_number", R"({"host": {"version": [12]}})",
     "/host/version: ", "[major, minor]"},
    {"negative_version", R"({"host": {"version": [-1, 0]}})",
     "/host/version/0: ", "must be from 0"},
    {"tool_number", R"({"host": {"tool": 29}})", "/host/tool: ", "must be a text"},
    {"negative_brush", R"({"host": {"brush": -1}})", "/host/brush: ", "out of range"},
    {"preference_number", R"({"host": {"zoomWithScrollWheel": 1}})",
     "/host/zoomWithScrollWheel: ", "true or false"},
    {"negative_window", R"({"host": {"window": {"frame": [0, 0, -1, 5]}}})",
     "/host/window/frame/2: ", "out of range"},
    {"window_not_closed", R"({"steps": [{"closeWindow": false}]})",
     "/steps/0/closeWindow: ", "must be true"},
    {"window_closed_by_number", R"({"steps": [{"closeWindow": 1}]})",
     "/steps/0/closeWindow: ", "true or false"},
    {"window_of_three", R"({"host": {"window": {"content": [0, 0, 1]}}})",
     "/host/window/content: ", "[x, y, width, height]"},
    {"negative_delay", R"({"host": {"redrawDelay": -5}})", "/host/redrawDelay: ", "out of range"},
    {"actions_text", R"({"host": {"actions": "a.atn"}})", "/host/actions: ", "must be a list"},
    {"action_number", R"({"host": {"actions": [1]}})", "/host/actions/0: ", "must be a text"},
    {"mouse_text", R"({"mouse": ["a", 1]})", "/mouse/0: ", "must be a number"},
    {"modifiers_too_large", R"({"modifiers": 4294967296})", "/modifiers: ", "4294967295"},
    {"framework_text", R"({"framework": "yes"})", "/framework: ", "true or false"},
    {"steps_object", R"({"steps": {}})", "/steps: ", "must be a list"},
    {"idle_step", R"({"steps": [{"at": 5}]})", "/steps/0: ", "must do something"},
    {"step_of_two_things", R"({"steps": [{"active": true, "click": "up"}]})",
     "/steps/0/click: ", "one thing only"},
    {"unknown_step", R"({"steps": [{"twist": 5}]})", "/steps/0/twist: ", "unknown field"},
    {"time_goes_back", R"({"steps": [{"at": 5, "active": true}, {"at": 4, "active": true}]})",
     "/steps/1/at: ", "less than"},
    {"fraction_of_time", R"({"steps": [{"at": 0.5, "active": true}]})",
     "/steps/0/at: ", "whole number"},
    {"five_axes", R"({"steps": [{"axes": [1, 2, 3, 4, 5]}]})", "/steps/0/axes: ", "six integers"},
    {"axis_too_large", R"({"steps": [{"axes": [0, 0, 0, 0, 0, 32768]}]})",
     "/steps/0/axes/5: ", "-32768 to 32767"},
    {"button_too_large", R"({"steps": [{"button": [65536, 1]}]})",
     "/steps/0/button/0: ", "0 to 65535"},
    {"command_too_small", R"({"steps": [{"command": -2147483649}]})",
     "/steps/0/command: ", "-2147483648"},
    {"short_message_type", R"({"steps": [{"message": {"type": "3dS"}}]})",
     "/steps/0/message/type: ", "four ASCII characters"},
    {"unknown_message_field", R"({"steps": [{"message": {"kind": 3}}]})",
     "/steps/0/message/kind: ", "unknown field"},
    {"unknown_click", R"({"steps": [{"click": "double"}]})", "/steps/0/click: ", "must be"},
    {"call_of_one", R"({"steps": [{"call": ["SP Interface"]}]})",
     "/steps/0/call: ", "[caller, selector]"},
    {"unknown_procedure", R"({"steps": [{"fail": {"procedure": "Action.Play", "error": 1}}]})",
     "/steps/0/fail/procedure: ", "unknown procedure"},
    {"failure_without_error", R"({"steps": [{"fail": {"procedure": "Framework.Install"}}]})",
     "/steps/0/fail: ", "an error"},
    {"refresh_of_numbers", R"({"steps": [{"refresh": [1, 2, 3, 4]}]})",
     "/steps/0/refresh/0: ", "[x, y, width, height]"},
};

void expectOneLineThatSays(const Finished& finished, const std::vector<std::string>& parts) {
  EXPECT_EQ(finished.status, 2);
  EXPECT_EQ(finished.output, "");
  EXPECT_EQ(std::count(finished.errors.begin(), finished.errors.end(), '\n'), 1) << finished.errors;
  EXPECT_TRUE(finished.errors.ends_with("\n"));
  for (const std::string& part : parts) {
    EXPECT_NE(finished.errors.find(part), std::string::npos) << part << " in " << finished.errors;
  }
}

class PlayCommandRefusalOfBrokenScenario : public testing::TestWithParam<Broken> {};

TEST_P(PlayCommandRefusalOfBrokenScenario, IsOneLineThatNamesFilePlaceAndReason) {
  const TemporaryFolder folder;
  const std::string file = folder.file("broken.json");
  const std::string log = folder.file("log");
  testing_support::writeFile(file, GetParam().text);
  const Finished finished = run({MRVSIM, "play", file, "--log", log});
  expectOneLineThatSays(finished, {file, GetParam().place, GetParam().reason});
  EXPECT_EQ(run({"test", "-e", log}).status, 1) << "a log was begun";
}

INSTANTIATE_TEST_SUITE_P(, PlayCommandRefusalOfBrokenScenario, testing::ValuesIn(kBroken),
                         [](const auto& test) { return test.param.name; });

TEST(PlayCommandRefusal, NamesAMissingScenario) {
  expectOneLineThatSays(run({MRVSIM, "play", "/nowhere/missing.json"}),
                        {"/nowhere/missing.json", "No such file"});
}

TEST(PlayCommandRefusal, NamesAFolderGivenAsScenario) {
  expectOneLineThatSays(run({MRVSIM, "play", "/tmp"}), {"/tmp", "directory"});
}

TEST(PlayCommandRefusal, NamesAnActionFileThatIsNotInTheScenariosFolder) {
  const TemporaryFolder folder;
  const std::string scenario = folder.file("scenario.json");
  testing_support::writeFile(scenario, R"({"host": {"actions": ["missing.atn"]}})");
  expectOneLineThatSays(run({MRVSIM, "play", scenario}),
                        {scenario + ":1:23: /host/actions/0: " + folder.file("missing.atn") +
                         ": cannot be read: No such file"});
}

TEST(PlayCommandRefusal, NamesTheFaultOfABrokenActionFile) {
  const TemporaryFolder folder;
  const std::string scenario = folder.file("scenario.json");
  testing_support::writeFile(scenario, R"({"host": {"actions": ["broken.atn"]}})");
  testing_support::writeFile(folder.file("broken.atn"), std::string("\0\0\0\20\0\0", 6));
  expectOneLineThatSays(run({MRVSIM, "play", scenario}),
                        {scenario + ":1:23: /host/actions/0: " + folder.file("broken.atn") +
                         ": at byte 4: a number of UTF-16 units is expected, found the end"});
}

TEST(PlayCommandRefusal, NamesAnUnwritableLog) {
  const TemporaryFolder folder;
  testing_support::writeFile(folder.file("empty.json"), "{}");
  const std::string log = folder.file("no/such/folder/log");
  expectOneLineThatSays(run({MRVSIM, "play", folder.file("empty.json"), "--log", log}),
                        {log, "cannot be written"});
}

TEST(PlayCommandRefusal, NamesAMissingPlugin) {
  const TemporaryFolder folder;
  testing_support::writeFile(folder.file("empty.json"), "{}");
  const std::string plugin = folder.file("missing.so");
  expectOneLineThatSays(run({MRVSIM, "play", folder.file("empty.json"), "--plugin", plugin}),
                        {plugin});
}

TEST(PlayCommandRefusal, OfBadUsageHasStatusTwo) {
  EXPECT_EQ(run({MRVSIM}).status, 2);
  EXPECT_EQ(run({MRVSIM, "play"}).status, 2);
  EXPECT_EQ(run({MRVSIM, "fly"}).status, 2);
}

}  // namespace
