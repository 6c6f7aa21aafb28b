// The plug-in's module: its symbols, and what is printed while it runs.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/support/Process.h"

namespace {

using testing_support::Finished;
using testing_support::run;
using testing_support::TemporaryFolder;

std::vector<std::string> symbols(const char* which) {
  const Finished listed = run({"nm", "-D", "--format=posix", which, MODULE});
  EXPECT_EQ(listed.status, 0) << listed.errors;
  std::vector<std::string> names;
  std::istringstream lines(listed.output);
  for (std::string line; std::getline(lines, line);) {
    names.push_back(line.substr(0, line.find_last_not_of(" 0123456789abcdef") + 1));
  }
  return names;
}

TEST(Module, ExportsOnlyTheEntryPoint) {
  EXPECT_EQ(symbols("--defined-only"), std::vector<std::string>{"AutoPluginMain T"});
}

TEST(Module, RefersToTheDeviceFrameworkWeakly) {
  int weak = 0;
  for (const std::string& symbol : symbols("--undefined-only")) {
    if (symbol.find("Moravin") == std::string::npos) continue;
    EXPECT_TRUE(symbol.ends_with(" w")) << symbol;
    ++weak;
  }
  EXPECT_EQ(weak, 4);
}

TEST(ModulePrinting, NeverMixesWithALogOnStandardOutput) {
  const TemporaryFolder folder;
  testing_support::writeFile(folder.file("scenario.json"),
                             R"({"host": {"zoomWithScrollWheel": null},
                                 "steps": [{"call": ["SP Interface", "Startup"]}]})");
  const Finished played = run({MRVSIM, "play", folder.file("scenario.json")});
  std::istringstream lines(played.output);
  int printed = 0;
  for (std::string line; std::getline(lines, line);) {
    EXPECT_TRUE(line.starts_with("{\"t\":")) << line;
    if (line.find("\"printed\"") != std::string::npos) ++printed;
  }
  EXPECT_EQ(printed, 1);
}

TEST(Module, LogsItsLastCallsToAFile) {
  const TemporaryFolder folder;
  testing_support::writeFile(folder.file("scenario.json"),
                             R"({"steps": [{"call": ["SP Interface", "Startup"]}]})");
  const Finished played =
      run({MRVSIM, "play", folder.file("scenario.json"), "--log", folder.file("log")});
  EXPECT_EQ(played.status, 0);
  EXPECT_EQ(played.output, "");
  const std::string log = testing_support::readFile(folder.file("log"));
  EXPECT_NE(log.find("\"do\":\"unregister\""), std::string::npos)
      << "the plug-in's own last calls are logged too";
}

}  // namespace
