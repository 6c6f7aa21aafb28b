// The bundle's code for arm64 does what its code for 64-bit Intel does. It runs in the simulated
// Mac that is built for arm64 Linux, under qemu.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "simulator/base/Json.h"
#include "tests/support/Process.h"
#include "tests/support/Scenarios.h"

namespace {

using testing_support::Finished;
using testing_support::run;
using testing_support::scenarioFile;
using testing_support::scenarioName;
using testing_support::scenariosWith;

constexpr const char* kNeeded = "built only with arm64 Linux: set MRV_ARM64_ROOT";

class Arm64 : public testing::Test {
 protected:
  void SetUp() override {
    if (std::string(MRV_ARM64_ROOT).empty()) GTEST_SKIP() << kNeeded;
  }

  // mrvsim for arm64 under qemu; `control` is a library that takes the place of some functions.
  static Finished mrvsim(const std::vector<std::string>& arguments,
                         const std::string& control = "") {
    std::vector<std::string> command = {MRV_QEMU, "-L", MRV_ARM64_ROOT};
    if (!control.empty()) {
      command.insert(command.end(), {"-E", "LD_PRELOAD=" MRV_ARM64_BUILD "/" + control + ".so"});
    }
    command.emplace_back(MRV_ARM64_BUILD "/bin/mrvsim");
    command.insert(command.end(), arguments.begin(), arguments.end());
    return run(command);
  }

  static Finished play(const std::string& scenario, const std::string& control = "") {
    return mrvsim({"play", scenarioFile(scenario), "--plugin", MRV_BUNDLE}, control);
  }
};

class Arm64Scenarios : public Arm64, public testing::WithParamInterface<std::string> {};

TEST_P(Arm64Scenarios, GiveTheSameLogAsOnIntel) {
  const Finished intel = run({MRVSIM, "play", scenarioFile(GetParam())});
  const Finished arm64 = play(GetParam());
  EXPECT_EQ(arm64.errors, intel.errors);
  EXPECT_EQ(arm64.status, intel.status);
  EXPECT_FALSE(arm64.output.empty());
  EXPECT_EQ(arm64.output, intel.output);
}

INSTANTIATE_TEST_SUITE_P(, Arm64Scenarios, testing::ValuesIn(scenariosWith(".json")), scenarioName);

// The emulator translates the code while it loads; without optimisation that takes too long for the
// check of the time that loading takes.
#ifdef MRV_LONG_TESTS
constexpr bool kMeasuresTime = true;
#else
constexpr bool kMeasuresTime = false;
#endif

TEST_F(Arm64, PassesEveryCheck) {
  std::vector<std::string> command = {"check", MRV_BUNDLE, "--json"};
  const simulator::Json all = simulator::Json::parse(mrvsim({"check", "--list", "--json"}).output);
  for (const auto& check : all["checks"]) {
    const auto name = check["name"].get<std::string>();
    if (kMeasuresTime || name != "load-time") command.insert(command.end(), {"--only", name});
  }
  const Finished checked = mrvsim(command);
  EXPECT_EQ(checked.status, 0) << checked.output << checked.errors;
  const simulator::Json report = simulator::Json::parse(checked.output);
  EXPECT_GT(report["checks"].size(), 20U);
  EXPECT_EQ(report["checks"].size(), all["checks"].size() - (kMeasuresTime ? 0 : 1));
  for (const auto& check : report["checks"]) {
    EXPECT_EQ(check["result"].get<std::string>(), "passed") << check.dump();
  }
}

// If the tests above passed without what they test, they would test nothing.

TEST_F(Arm64, FailsScenariosWithRefusedSuitesWithoutUnwindData) {
  for (const char* const name : {"suite-refused", "brush-suite-refused", "queued-suite-refused"}) {
    EXPECT_EQ(play(name).status, 0) << name;
    EXPECT_EQ(play(name, "WithoutUnwindData").status, 4) << name;
  }
}

TEST_F(Arm64, LogsOtherWheelTicksWithoutVariadicImports) {
  const Finished good = play("pan");
  EXPECT_NE(good.output.find("\"wheel\""), std::string::npos);
  EXPECT_NE(play("pan", "WithoutVariadicImports").output, good.output);
}

TEST_F(Arm64, RefusesAFileWithIntelsCodeAlone) {
  const testing_support::TemporaryFolder folder;
  const std::string binary = testing_support::readFile(MRV_BUNDLE "/Contents/MacOS/MrvPhotoshop");
  // The code for 64-bit Intel comes first, after one page with the table.
  testing_support::writeFile(folder.file("thin"), binary.substr(0x1000));
  const Finished played = mrvsim({"play", scenarioFile("pan"), "--plugin", folder.file("thin")});
  EXPECT_EQ(played.status, 2);
  EXPECT_EQ(played.errors, "mrvsim: " + folder.file("thin") +
                               ": the file is a Mach-O file for x86_64; a 64-bit Mach-O file for "
                               "arm64 is needed\n");
}

}  // namespace
