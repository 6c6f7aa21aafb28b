// The outputs of mrvsim when all goes well, and its commands' ordinary results.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "simulator/base/Json.h"
#include "tests/mrvsim/Cases.h"
#include "tests/support/Process.h"

namespace {

using simulator::Json;
using simulator::jsonOf;
using testing::HasSubstr;
using testing_support::CaseFolder;
using testing_support::Finished;
using testing_support::readFile;
using testing_support::run;
using testing_support::writeFile;

class Output : public testing::Test {
 protected:
  std::string log() const { return folder_.file("log"); }
  Finished play() { return run({MRVSIM, "play", kZoom, "--log", log()}); }

  const std::string kZoom = MRV_SCENARIOS "/zoom.json";
  const std::string kExpected = readFile(MRV_SCENARIOS "/zoom.expected.jsonl");
  CaseFolder folder_;
};

TEST_F(Output, IsTheSameInAFileAndOnStandardOutput) {
  EXPECT_EQ(play().output, "");
  EXPECT_EQ(readFile(log()), kExpected);
  EXPECT_EQ(run({MRVSIM, "play", kZoom}).output, kExpected);
  EXPECT_EQ(run({MRVSIM, "play", kZoom, "--log", "-"}).output, kExpected);
  EXPECT_EQ(run({MRVSIM, "play", kZoom, "--log", "/dev/stdout"}).output, kExpected);
}

TEST_F(Output, ReplacesAnOlderFileAndKeepsItsPermissions) {
  writeFile(log(), std::string(1000000, 'x'));
  ASSERT_EQ(chmod(log().c_str(), 0640), 0);
  EXPECT_EQ(play().status, 0);
  EXPECT_EQ(readFile(log()), kExpected);
  struct stat status = {};
  ASSERT_EQ(stat(log().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
  EXPECT_THAT(folder_.files(), testing::ElementsAre("log"));
}

TEST_F(Output, MakesANewFileAsTheUserWantsNewFiles) {
  const mode_t before = umask(027);
  EXPECT_EQ(play().status, 0);
  umask(before);
  struct stat status = {};
  ASSERT_EQ(stat(log().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST_F(Output, FollowsSymbolicLinksAlsoToWhatIsNotThereYet) {
  std::filesystem::create_directory(folder_.file("there"));
  std::filesystem::create_symlink("second", folder_.file("log"));
  std::filesystem::create_symlink("there/log", folder_.file("second"));
  EXPECT_EQ(play().status, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(log()));
  EXPECT_EQ(readFile(folder_.file("there/log")), kExpected);
  EXPECT_EQ(play().status, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(log()));
  EXPECT_EQ(readFile(folder_.file("there/log")), kExpected);
}

TEST_F(Output, OfSeveralScenariosIsInTheirOrder) {
  const std::string pan = MRV_SCENARIOS "/pan.json";
  const Finished played = run({MRVSIM, "play", kZoom, pan, "--log", log(), "--summary"});
  EXPECT_EQ(played.status, 0);
  EXPECT_EQ(readFile(log()), kExpected + readFile(MRV_SCENARIOS "/pan.expected.jsonl"));
  EXPECT_EQ(played.output, kZoom + ":\n" + readFile(MRV_SCENARIOS "/zoom.expected.summary") + "\n" +
                               pan + ":\n" + run({MRVSIM, "play", pan, "--summary"}).output);
}

TEST_F(Output, OfStandardInputIsThatOfTheFile) {
  Json description = {{"arguments", {"play", "-"}}, {"input", readFile(kZoom)}};
  const Finished played = finish(start(description, folder_), description, folder_);
  EXPECT_EQ(played.status, 0);
  EXPECT_EQ(played.output, folder_.shortened(kExpected));
  EXPECT_THAT(folder_.leftovers(), testing::IsEmpty());
}

TEST_F(Output, OfTwoRunsAtOnceIsThatOfOneOfThem) {
  const Json description = {{"arguments", {"play", "{scenarios}/zoom.json", "--log", "{dir}/log"}}};
  const std::vector<pid_t> processes = {start(description, folder_), start(description, folder_),
                                        start(description, folder_)};
  for (const pid_t process : processes) {
    EXPECT_EQ(finish(process, description, folder_).status, 0);
  }
  EXPECT_EQ(readFile(log()), kExpected);
  EXPECT_THAT(folder_.files(), testing::ElementsAre("log"));
}

TEST_F(Output, OfDumpsAtOnceIsAppendedWhole) {
  // Not a file of the description, which each start would write anew while others read it.
  writeFile(folder_.file("d.json"), "null");
  const Json description = {{"arguments", {"dump", "{dir}/d.json", "{dir}/out"}}};
  const std::string one = run({MRVSIM, "dump", folder_.file("d.json"), "-"}).output;
  std::vector<pid_t> processes;
  for (int i = 0; i < 4; ++i) processes.push_back(start(description, folder_));
  for (const pid_t process : processes) {
    EXPECT_EQ(finish(process, description, folder_).status, 0);
  }
  EXPECT_THAT(one, HasSubstr("SPErr PlayeventSet("));
  EXPECT_EQ(readFile(folder_.file("out")), one + one + one + one);
}

TEST_F(Output, OfDumpMayBeADeviceOrALink) {
  writeFile(folder_.file("d.json"), "null");
  const std::string one = run({MRVSIM, "dump", folder_.file("d.json"), "/dev/stdout"}).output;
  std::filesystem::create_symlink("target", folder_.file("link"));
  EXPECT_EQ(run({MRVSIM, "dump", folder_.file("d.json"), folder_.file("link")}).status, 0);
  EXPECT_EQ(readFile(folder_.file("target")), one);
  EXPECT_EQ(run({MRVSIM, "dump", folder_.file("d.json"), "/dev/null"}).status, 0);
}

TEST_F(Output, OfAPluginIsALineOfTheLogAndNothingElse) {
  const std::string scenario = folder_.file("s.json");
  writeFile(scenario, R"({"steps": [{"call": ["SP Interface", "Startup"]}]})");
  setenv("MISBEHAVE", "print", 1);
  const Finished played = run({MRVSIM, "play", scenario, "--plugin", MISBEHAVES, "--summary"});
  EXPECT_EQ(played.output.find("forged"), std::string::npos);
  std::istringstream lines(run({MRVSIM, "play", scenario, "--plugin", MISBEHAVES}).output);
  std::vector<std::string> printed;
  for (std::string line; std::getline(lines, line);) {
    const Json parsed = jsonOf(line);
    EXPECT_NE(parsed["what"], "forged");
    if (parsed["what"] == "printed") printed.push_back(parsed["text"]);
  }
  EXPECT_THAT(printed, testing::UnorderedElementsAre("\uFFFD raw", "from a shell",
                                                     R"({"t":0,"what":"forged"})"));
}

TEST_F(Output, NamesTheSignalOfATruncatedModule) {
  const std::string module = folder_.file("cut.so");
  constexpr std::size_t kPage = 4096;
  writeFile(module, readFile(MODULE).substr(0, kPage));
  const Finished played = run({MRVSIM, "play", kZoom, "--plugin", module, "--log", log()});
  EXPECT_EQ(played.status, 4);
  EXPECT_EQ(played.errors, "mrvsim: " + module +
                               ": the plug-in crashed: SIGBUS (Bus error) while it was loaded\n");
  EXPECT_EQ(readFile(log()), "");
}

TEST(Options, StandBeforeOrAfterFilesAndEndWithTwoDashes) {
  const std::string zoom = MRV_SCENARIOS "/zoom.json";
  const std::string expected = readFile(MRV_SCENARIOS "/zoom.expected.jsonl");
  EXPECT_EQ(run({MRVSIM, "play", "--timeout", "20", zoom}).output, expected);
  EXPECT_EQ(run({MRVSIM, "play", zoom, "--timeout=20"}).output, expected);
  EXPECT_EQ(run({MRVSIM, "play", "--log", "-", "--", zoom}).output, expected);
}

TEST(Options, OfCheckTakeOneNameEach) {
  for (const auto& words : std::vector<std::vector<std::string>>{
           {"--only", "load-time", MODULE},
           {MODULE, "--only", "load-time"},
           {"--only", "unknown-calls", "--only", "load-time", MODULE}}) {
    std::vector<std::string> command = {MRVSIM, "check"};
    command.insert(command.end(), words.begin(), words.end());
    const Finished checked = run(command);
    EXPECT_EQ(checked.status, 0) << checked.errors;
    EXPECT_THAT(checked.output, HasSubstr("load-time          passed\n"));
  }
}

TEST(Options, VersionNamesTheProgramAndItsVersion) {
  const Finished version = run({MRVSIM, "--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_THAT(version.output, testing::MatchesRegex("mrvsim " MRV_VERSION "( \\([0-9a-f]+\\))?\n"));
}

TEST(Options, HelpIsOnStandardOutput) {
  for (const char* command : {"play", "dump", "check", "validate", "list"}) {
    const Finished help = run({MRVSIM, command, "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.output, HasSubstr(std::string("mrvsim ") + command));
    EXPECT_EQ(help.errors, "");
  }
  EXPECT_THAT(run({MRVSIM, "--help"}).output, HasSubstr("validate"));
}

TEST(ListCommand, NamesWhatScenariosMayUse) {
  EXPECT_THAT(run({MRVSIM, "list", "steps"}).output, HasSubstr("\naxes\n"));
  EXPECT_THAT(run({MRVSIM, "list", "tools"}).output, HasSubstr("\npaintbrushTool\n"));
  EXPECT_THAT(run({MRVSIM, "list", "layouts"}).output, HasSubstr("com.apple.keylayout.US\n"));
  EXPECT_THAT(run({MRVSIM, "list", "procedures"}).output, HasSubstr("\nFramework.Install\n"));
}

/// What a terminal shows of a play in which the plug-in uses 1.2 s of processor time before it is
/// ended: more than the half of a second after which progress is shown.
std::string shownOnATerminal(const CaseFolder& folder, const std::string& option) {
  writeFile(folder.file("s.json"), R"({"steps": [{"call": ["SP Interface", "Startup"]}]})");
  const std::string command = folder.expanded("cd {dir}; MISBEHAVE=spin " MRVSIM
                                              " play s.json --plugin {misbehaves} --log log"
                                              " --timeout 1.2 " +
                                              option);
  return run({"script", "--quiet", "--command", command, folder.file("../typescript")}).output;
}

TEST(PlayCommandProgress, IsShownOnATerminalAndCleared) {
  const CaseFolder folder;
  const std::string shown = shownOnATerminal(folder, "");
  EXPECT_THAT(shown, HasSubstr("\r\x1B[Ks.json [     "));
  EXPECT_THAT(shown, HasSubstr("  0 %\r\x1B[Kmrvsim: s.json:1:12: /steps/0 (call): the plug-in "));
}

TEST(PlayCommandProgress, IsNotShownIfQuietIsAsked) {
  const CaseFolder folder;
  EXPECT_THAT(shownOnATerminal(folder, "--quiet"), testing::StartsWith("mrvsim: s.json:1:12:"));
}

TEST(ValidateCommand, AcceptsEveryScenarioOfTheProject) {
  std::vector<std::string> command = {MRVSIM, "validate"};
  std::string expected;
  for (const auto& entry : std::filesystem::directory_iterator(MRV_SCENARIOS)) {
    if (entry.path().extension() != ".json") continue;
    command.push_back(entry.path());
    expected += entry.path().string() + ": ok\n";
  }
  const Finished validated = run(command);
  EXPECT_EQ(validated.status, 0);
  EXPECT_EQ(validated.output, expected);
}

TEST(ValidateCommand, AcceptsDescriptorsAndStandardInput) {
  const CaseFolder folder;
  const Json description = {
      {"arguments", {"validate", "{dir}/d.json", "-"}},
      {"files", {{"d.json", R"( [{"key": "Wdth", "type": "long", "value": 7}])"}}},
      {"input", "\n{\"steps\": []}"}};
  const Finished validated = finish(start(description, folder), description, folder);
  EXPECT_EQ(validated.status, 0);
  EXPECT_EQ(validated.output, "{dir}/d.json: ok\n-: ok\n");
}

TEST(CheckCommand, ListsTheChecksAsJson) {
  const Finished listed = run({MRVSIM, "check", "--list", "--json"});
  EXPECT_EQ(listed.status, 0);
  const Json checks = jsonOf(listed.output)["checks"];
  ASSERT_GE(checks.size(), 16U);
  EXPECT_EQ(checks[0]["name"], "exports");
  EXPECT_TRUE(checks[0]["sentence"].is_string());
}

TEST(CheckCommand, DoesNotBlameThePluginIfThereIsNoRoomForTemporaryFiles) {
  const CaseFolder folder;
  const Json description = {{"arguments", {"check", "{plugin}", "--only", "unknown-calls"}},
                            {"fileSizeLimit", 300}};
  const Finished checked = finish(start(description, folder), description, folder);
  EXPECT_EQ(checked.status, 2);
  EXPECT_EQ(checked.output, "");
  EXPECT_THAT(checked.errors, testing::StartsWith("mrvsim: cannot write the host's files in "));
  EXPECT_THAT(checked.errors, HasSubstr(": File too large ("));
}

TEST(CheckCommand, ShowsEachResultBeforeTheNextCheck) {
  const CaseFolder folder;
  const std::string pipe = folder.file("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  testing_support::adoptOrphans();
  const Json description = {
      {"arguments", {"check", "{misbehaves}", "--only", "exports", "--only", "start-and-stop"}},
      {"environment", {{"MISBEHAVE", "spin"}, {"HELLO", pipe}}}};
  const pid_t process = start(description, folder);
  // Can be read as soon as the second check has begun.
  EXPECT_EQ(readFile(pipe), "!");
  EXPECT_THAT(readFile(folder.file("../output")), HasSubstr("exports            not applicable"));
  kill(process, SIGTERM);
  EXPECT_EQ(finish(process, description, folder).status, 143);
}

}  // namespace
