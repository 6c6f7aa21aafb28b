// `mrvsim check` passes the shipped plug-in; each check fails the plug-in that was made to violate
// it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "packaging/resource/HostDescription.h"
#include "simulator/base/Json.h"
#include "simulator/check/Check.h"
#include "tests/support/Process.h"

namespace {

using simulator::Json;
using testing::HasSubstr;
using testing_support::Finished;
using testing_support::run;
using testing_support::TemporaryFolder;

std::string module(const char* name) { return std::string(MRV_FAULTY "/") + name + ".so"; }
std::string macModule(const char* name) {
  return std::string(MRV_FAULTY_MAC "/") + name + ".bundle";
}

struct Faulty {
  const char* check;
  std::string plugin;
  const char* reason;  // part of the check's reason
};

void PrintTo(const Faulty& faulty, std::ostream* out) { *out << faulty.check; }

std::vector<Faulty> faultyPlugins() {
  return {
      {"exports", macModule("ExportsMore"), "exports [_AutoPluginMain, _forgottenHelper]"},
      {"load-commands", macModule("LoadsMore"), "loads /usr/local/lib/libElsewhere.dylib"},
      {"weak-framework", macModule("NeedsFramework"), "not a weak one"},
      {"minimum-system", macModule("NeedsNewerSystem"), "needs macOS 11.0"},
      {"start-and-stop", module("NeverStarts"), "registered 0 times"},
      {"start-twice", module("StartsAgain"), "registered 2 times"},
      {"without-framework", module("IgnoresAbsence"), "starts a thread"},
      {"unknown-calls", module("ActsOnUnknownCalls"), "an unknown call led to"},
      {"suites-released", module("KeepsSuite"), "df135115-c769-11d0-8079-00c04fd7ec47"},
      {"objects-freed", module("KeepsObject"), "leaked: descriptor"},
      {"handles-respected", module("FreesTwice"), "was freed before"},
      {"device-thread", module("TalksFromThread"), "another thread"},
      {"keys-released", module("HoldsKey"), "58"},
      {"hostile-host", module("TrustsHost"), "with acquisition 1 refused: "},
      {"load-time", module("SlowToLoad"), "of processor time"},
  };
}

class CheckOnFaultyPlugin : public testing::TestWithParam<Faulty> {};

TEST_P(CheckOnFaultyPlugin, Fails) {
  const Faulty& faulty = GetParam();
  const Finished checked = run({MRVSIM, "check", faulty.plugin, "--only", faulty.check});
  EXPECT_EQ(checked.status, 1) << checked.errors;
  EXPECT_THAT(checked.output, HasSubstr("failed"));
  EXPECT_THAT(checked.output, HasSubstr(faulty.reason));
}

INSTANTIATE_TEST_SUITE_P(, CheckOnFaultyPlugin, testing::ValuesIn(faultyPlugins()),
                         [](const auto& test) {
                           std::string name = test.param.check;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

TEST(Check, HasAFaultyPluginForEveryName) {
  std::set<std::string> failed = {"resource"};  // tested below with modified bundles
  for (const Faulty& faulty : faultyPlugins()) failed.insert(faulty.check);
  std::set<std::string> all;
  for (const simulator::Check& check : simulator::allChecks()) all.insert(check.name);
  EXPECT_EQ(failed, all);
}

// The shipped bundle with another description; without a description if the text is empty.
class BundleWith {
 public:
  explicit BundleWith(const std::string& description) : path_(folder_.file("MrvPhotoshop.plugin")) {
    std::filesystem::copy(MRV_BUNDLE, path_, std::filesystem::copy_options::recursive);
    const std::string file = path_ + "/Contents/Resources/MrvPhotoshop.rsrc";
    std::filesystem::remove(file);
    if (description.empty()) return;
    testing_support::writeFile(file, writeResourceFork({parseHostDescription(description)}));
  }

  Finished check() const { return run({MRVSIM, "check", path_, "--only", "resource"}); }

 private:
  TemporaryFolder folder_;
  std::string path_;
};

std::string description(const std::string& from = "", const std::string& to = "") {
  std::string text = testing_support::readFile(MRV_DESCRIPTION);
  if (!from.empty()) text.replace(text.find(from), from.size(), to);
  return text;
}

TEST(CheckResource, PassesTheShippedDescription) {
  EXPECT_EQ(BundleWith(description()).check().status, 0);
}

TEST(CheckResource, FailsWithoutADescription) {
  const Finished checked = BundleWith("").check();
  EXPECT_EQ(checked.status, 1);
  EXPECT_THAT(checked.output, HasSubstr("is not there"));
}

TEST(CheckResource, FailsIfTheEntryPointIsNotExported) {
  const Finished checked = BundleWith(description("entry   AutoPluginMain", "entry Other")).check();
  EXPECT_EQ(checked.status, 1);
  EXPECT_THAT(checked.output, HasSubstr("names Other, which is not exported"));
}

TEST(CheckResource, FailsIfShutDownIsNotRequested) {
  const Finished checked = BundleWith(description("startup shutdown", "startup")).check();
  EXPECT_EQ(checked.status, 1);
  EXPECT_THAT(checked.output, HasSubstr("does not ask for"));
}

TEST(CheckResource, FailsForAnotherKindOfPlugin) {
  EXPECT_EQ(BundleWith(description("actn", "8BFM")).check().status, 1);
}

TEST(CheckResource, FailsForADamagedFile) {
  const TemporaryFolder folder;
  const std::string bundle = folder.file("MrvPhotoshop.plugin");
  std::filesystem::copy(MRV_BUNDLE, bundle, std::filesystem::copy_options::recursive);
  testing_support::writeFile(bundle + "/Contents/Resources/MrvPhotoshop.rsrc", "damaged");
  EXPECT_EQ(run({MRVSIM, "check", bundle, "--only", "resource"}).status, 1);
}

TEST(Check, PassesTheShippedBundleInEveryPoint) {
  const Finished checked = run({MRVSIM, "check", MRV_BUNDLE, "--json"});
  EXPECT_EQ(checked.status, 0) << checked.output;
  const Json report = Json::parse(checked.output);
  EXPECT_EQ(report["passed"], simulator::allChecks().size());
  EXPECT_EQ(report["failed"], 0);
  for (const Json& check : report["checks"]) EXPECT_EQ(check["result"], "passed") << check;
}

TEST(Check, PassesTheLinuxModuleInWhatAppliesToIt) {
  const Finished checked = run({MRVSIM, "check", MODULE});
  EXPECT_EQ(checked.status, 0) << checked.output;
  EXPECT_THAT(checked.output, HasSubstr("not applicable: not built for the Mac"));
}

TEST(Check, ListsNamesAndSentences) {
  const Finished listed = run({MRVSIM, "check", "--list"});
  EXPECT_EQ(listed.status, 0);
  for (const simulator::Check& check : simulator::allChecks()) {
    EXPECT_THAT(listed.output, HasSubstr(check.name));
    EXPECT_THAT(listed.output, HasSubstr(check.sentence));
  }
}

TEST(Check, RunsOnlyTheRequestedChecks) {
  const Finished checked = run({MRVSIM, "check", MODULE, "--only", "load-time", "--json"});
  const Json report = Json::parse(checked.output);
  ASSERT_EQ(report["checks"].size(), 1U);
  EXPECT_EQ(report["checks"][0]["name"], "load-time");
}

TEST(Check, DoesNotPassIfNothingApplies) {
  EXPECT_EQ(run({MRVSIM, "check", MODULE, "--only", "exports"}).status, 1);
}

TEST(Check, FailsForAFileThatCannotBeLoaded) {
  const TemporaryFolder folder;
  testing_support::writeFile(folder.file("text.so"), "no module");
  const Finished checked = run({MRVSIM, "check", folder.file("text.so")});
  EXPECT_EQ(checked.status, 1);
  EXPECT_THAT(checked.output, HasSubstr("0 passed"));
}

TEST(Check, RejectsAMissingFileAndAnUnknownName) {
  const Finished missing = run({MRVSIM, "check", "/nowhere/at/all"});
  EXPECT_EQ(missing.status, 2);
  EXPECT_THAT(missing.errors, HasSubstr("/nowhere/at/all is not there"));
  const Finished unknown = run({MRVSIM, "check", MODULE, "--only", "taste"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_THAT(unknown.errors, HasSubstr("there is no check taste"));
  EXPECT_EQ(run({MRVSIM, "check"}).status, 2);
}

}  // namespace
