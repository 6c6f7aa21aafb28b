// The bundle and the module behave the same: every scenario gives the same log.
#include <gmock/gmock.h>

#include <string>

#include "tests/support/Process.h"
#include "tests/support/RandomScenario.h"
#include "tests/support/Scenarios.h"

namespace {

using testing_support::Finished;
using testing_support::randomScenario;
using testing_support::run;
using testing_support::scenarioFile;
using testing_support::scenarioName;
using testing_support::scenariosWith;
using testing_support::textOf;
using testing_support::writeFile;

#ifdef MRV_LONG_TESTS
constexpr unsigned kRandomScenarios = 300;
#else
constexpr unsigned kRandomScenarios = 20;
#endif

/// `scenario`: a file.
void expectTheSameLogOf(const std::string& scenario, const std::string& file) {
  const Finished module = run({MRVSIM, "play", scenario});
  const Finished bundle = run({MRVSIM, "play", scenario, "--plugin", file});
  EXPECT_EQ(bundle.errors, module.errors);
  EXPECT_EQ(bundle.status, module.status);
  EXPECT_FALSE(bundle.output.empty());
  EXPECT_EQ(bundle.output, module.output);
}

void expectTheSameLog(const std::string& name, const std::string& file) {
  SCOPED_TRACE(name);
  expectTheSameLogOf(scenarioFile(name), file);
}

class BundleScenarios : public testing::TestWithParam<std::string> {};

TEST_P(BundleScenarios, GiveTheSameLogAsWithTheModule) { expectTheSameLog(GetParam(), MRV_BUNDLE); }

INSTANTIATE_TEST_SUITE_P(, BundleScenarios, testing::ValuesIn(scenariosWith(".json")),
                         scenarioName);

TEST(BundleScenariosOfRandomSteps, GiveTheSameLogAsWithTheModule) {
  const testing_support::TemporaryFolder folder;
  for (unsigned seed = 1; seed <= kRandomScenarios; ++seed) {
    SCOPED_TRACE(seed);
    writeFile(folder.file("s.json"), textOf(randomScenario(seed)));
    expectTheSameLogOf(folder.file("s.json"), MRV_BUNDLE);
  }
}

// The bundle of the preset macos-cross.
TEST(NativeBundle, GivesTheSameLogsAsTheModule) {
  const std::string bundle = MRV_NATIVE_BUNDLE;
  if (bundle.empty()) GTEST_SKIP() << "built only with an SDK: set MACOS_SDK";
  for (const std::string& name : scenariosWith(".json")) expectTheSameLog(name, bundle);
}

TEST(BundleScenariosFolder, HoldsTheScenariosOfEachMotion) {
  EXPECT_THAT(scenariosWith(".json"), testing::IsSupersetOf({"brush", "flight", "pan", "zoom"}));
}

TEST(BundleScenariosPlayer, AcceptsTheBinaryInsideABundle) {
  const std::string scenario = MRV_SCENARIOS "/lifecycle.json";
  const std::string binary = MRV_BUNDLE "/Contents/MacOS/MrvPhotoshop";
  EXPECT_EQ(run({MRVSIM, "play", scenario, "--plugin", binary}).output,
            run({MRVSIM, "play", scenario}).output);
}

// In the live window, whose process for the plug-in is not that of `play`.
TEST(BundleInTheLiveWindow, GivesTheLogThatItsRecordingPlaysTo) {
  if (!MRV_HAS_LIVE) GTEST_SKIP() << "built without a window";
  const testing_support::TemporaryFolder folder;
  const std::string recording = folder.file("r.json");
  const Finished shown =
      run({"env", "SDL_VIDEODRIVER=dummy", "SDL_RENDER_DRIVER=software", MRVSIM, "live",
           scenarioFile("view"), "--demo", "--plugin", MRV_BUNDLE, "--frames", "30", "--record",
           recording, "--log", folder.file("log")});
  EXPECT_EQ(shown.status, 0) << shown.errors;
  const Finished played = run({MRVSIM, "play", recording, "--plugin", MRV_BUNDLE});
  EXPECT_NE(played.output.find("\"what\":\"wheel\""), std::string::npos);
  EXPECT_EQ(testing_support::readFile(folder.file("log")), played.output);
}

TEST(BundleScenariosPlayer, RefusesAnEmptyBundle) {
  const testing_support::TemporaryFolder folder;
  const Finished played =
      run({MRVSIM, "play", MRV_SCENARIOS "/lifecycle.json", "--plugin", folder.file("")});
  EXPECT_EQ(played.status, 2);
  EXPECT_NE(played.errors.find("cannot be read"), std::string::npos) << played.errors;
  EXPECT_EQ(played.output, "");
}

}  // namespace
