#include <gtest/gtest.h>

#include "mac/Options.h"

namespace {

using mrvmac::Options;
using mrvmac::parseOptions;

std::string errorOf(const std::vector<std::string>& arguments) {
  try {
    parseOptions(arguments, "folder");
  } catch (const mrvmac::BadOptions& error) {
    return error.what();
  }
  return "none";
}

TEST(MacOptions, NameTheFilesBesideTheProgram) {
  const Options options = parseOptions({}, "/some/folder");
  EXPECT_EQ(options.bundle, "/some/folder/MrvPhotoshop.plugin");
  EXPECT_EQ(options.scenario, "/some/folder/probe.json");
  EXPECT_EQ(options.expected, "/some/folder/probe.expected.jsonl");
  EXPECT_EQ(options.report, "mrvmac-report.txt");
  EXPECT_TRUE(options.ask);
  EXPECT_FALSE(options.help);
}

TEST(MacOptions, AreTakenFromTheCommandLine) {
  const Options options = parseOptions({"--bundle", "b", "--scenario", "s", "--expected", "e",
                                        "--report", "r", "--no-questions", "--help"},
                                       "/some/folder");
  EXPECT_EQ(options.bundle, "b");
  EXPECT_EQ(options.scenario, "s");
  EXPECT_EQ(options.expected, "e");
  EXPECT_EQ(options.report, "r");
  EXPECT_FALSE(options.ask);
  EXPECT_TRUE(options.help);
}

TEST(MacOptions, RefuseWhatTheyDoNotKnow) {
  EXPECT_EQ(errorOf({"--what"}), "unknown option --what; mrvmac --help lists the options");
  EXPECT_EQ(errorOf({"file"}), "unknown option file; mrvmac --help lists the options");
  EXPECT_EQ(errorOf({"--report"}), "--report: a file must follow");
}

TEST(MacOptions, AreAllInTheHelp) {
  const std::string help = mrvmac::help();
  for (const char* const option :
       {"--bundle", "--scenario", "--expected", "--report", "--no-questions", "--help"}) {
    EXPECT_NE(help.find(option), std::string::npos) << option;
  }
}

}  // namespace
