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
using simulator::jsonOf;
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
      {"file-type", macModule("IsLibrary"), "is a dynamic library"},
      {"run-paths", macModule("HasRunPath"), "looks for libraries in /Users/builder/lib"},
      {"segment-rights", macModule("WritesCode"), "__TEXT is writable and executable"},
      {"signature", macModule("ExportsMore"), "is not signed"},
      {"whole-day", module("Crashes"),
       R"({"call":["SP Interface","About"]}: crashed: SIGSEGV (Segm)"},
      {"start-and-stop", module("NeverStarts"), "registered 0 times"},
      {"start-twice", module("StartsAgain"), "registered 2 times"},
      {"without-framework", module("IgnoresAbsence"), "starts a thread"},
      {"unknown-calls", module("ActsOnUnknownCalls"), "an unknown call led to"},
      {"suites-released", module("KeepsSuite"), "df135115-c769-11d0-8079-00c04fd7ec47"},
      {"objects-freed", module("KeepsObject"), "leaked: descriptor"},
      {"handles-respected", module("FreesTwice"), "was freed before"},
      {"device-thread", module("TalksFromThread"), "another thread"},
      {"keys-released", module("HoldsKey"), "left down: the option key (58)"},
      {"typed-keys", module("TypesHalf"), "left down: key 41"},
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
  // Tested below with modified bundles.
  std::set<std::string> failed = {"info-plist", "pkg-info", "resource"};
  for (const Faulty& faulty : faultyPlugins()) failed.insert(faulty.check);
  std::set<std::string> all;
  for (const simulator::Check& check : simulator::allChecks()) all.insert(check.name);
  EXPECT_EQ(failed, all);
}

std::string reasonOf(const char* check, const std::string& plugin) {
  return run({MRVSIM, "check", plugin, "--only", check}).output;
}

TEST(CheckKeysReleased, FailsIfAKeyStaysDownBeyondTheShutDown) {
  EXPECT_THAT(reasonOf("keys-released", module("HoldsKeyUntilUnload")),
              HasSubstr("failed: left down: the command key (55)"));
}

TEST(CheckWholeDay, NamesTheExceptionAndTheStepThatLetItOut) {
  EXPECT_THAT(reasonOf("whole-day", module("Throws")),
              HasSubstr(R"(failed: in step 1, {"call":["SP Interface","Startup"]}: threw )"
                        R"((anonymous namespace)::HostFailure ("no suite to be had"))"));
  EXPECT_THAT(reasonOf("whole-day", macModule("LetsExceptionOut")),
              HasSubstr(R"("Startup"]}: threw unsigned int (77))"));
}

TEST(CheckWholeDay, NamesAnExceptionOnAnotherThread) {
  EXPECT_THAT(reasonOf("whole-day", module("ThrowsOnThread")),
              HasSubstr(R"(in step 1, {"call":["SP Interface","Startup"]}: threw )"
                        R"(std::logic_error ("alone"))"));
}

TEST(CheckWholeDay, SaysIfThePluginEndsWhileItIsLoadedOrUnloaded) {
  EXPECT_THAT(reasonOf("whole-day", module("CrashesAtLoad")),
              HasSubstr("while it was loaded: crashed: SIGABRT (Aborted)"));
  EXPECT_THAT(
      reasonOf("whole-day", module("CrashesAtUnload")),
      HasSubstr(R"("Shutdown"]}, or while it was unloaded after it: crashed: SIGABRT (Aborted))"));
}

// A copy of the shipped bundle to change.
class CopiedBundle : public testing::Test {
 protected:
  CopiedBundle() {
    std::filesystem::copy(MRV_BUNDLE, path_, std::filesystem::copy_options::recursive);
  }
  std::string file(const char* name) const { return path_ + "/Contents/" + name; }
  // What the check says if `from` in Info.plist is replaced by `to`.
  std::string with(const std::string& from, const std::string& to) {
    std::string text = original_;
    EXPECT_NE(text.find(from), std::string::npos) << from;
    text.replace(text.find(from), from.size(), to);
    testing_support::writeFile(file("Info.plist"), text);
    return reasonOf("info-plist", path_);
  }
  std::string withPackageInfo(const std::string& text) {
    testing_support::writeFile(file("PkgInfo"), text);
    return reasonOf("pkg-info", path_);
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.file("Copied.plugin");
  std::string original_ = testing_support::readFile(MRV_BUNDLE "/Contents/Info.plist");
};

TEST_F(CopiedBundle, FailsInfoPlistIfAKeyIsMissing) {
  for (const char* const key :
       {"CFBundleExecutable", "CFBundleIdentifier", "CFBundleInfoDictionaryVersion", "CFBundleName",
        "CFBundlePackageType", "CFBundleShortVersionString", "CFBundleSignature",
        "CFBundleVersion"}) {
    EXPECT_THAT(with("<key>" + std::string(key) + "<", "<key>Other<"),
                HasSubstr("failed: Info.plist has no " + std::string(key) + "\n"));
  }
}

TEST_F(CopiedBundle, FailsInfoPlistIfAValueIsOfAnotherKind) {
  EXPECT_THAT(with("<string>8LIZ<", "<string>8LIZX<"),
              HasSubstr("CFBundlePackageType is \"8LIZX\"; a code of four characters is allowed"));
  EXPECT_THAT(with("<string>8BIM</string>", "<integer>8</integer>"),
              HasSubstr("CFBundleSignature is 8; a code"));
  EXPECT_THAT(with("<string>com.moravin.", "<string>com_moravin."),
              HasSubstr("CFBundleIdentifier is \"com_moravin."));
  EXPECT_THAT(with("<string>6.0<", "<string>7.0<"), HasSubstr("\"7.0\"; 6.0 is allowed"));
  EXPECT_THAT(with("<key>CFBundleVersion</key>\n\t<string>",
                   "<key>CFBundleVersion</key>\n\t<string>1.2.3."),
              HasSubstr("; one to three numbers is allowed"));
  EXPECT_THAT(with("<key>CFBundleName</key>\n\t<string>MrvPhotoshop<",
                   "<key>CFBundleName</key>\n\t<string><"),
              HasSubstr("CFBundleName is \"\"; a text is allowed"));
}

TEST_F(CopiedBundle, FailsInfoPlistIfItDisagreesWithTheBinary) {
  EXPECT_THAT(with("<key>CFBundleExecutable</key>\n\t<string>MrvPhotoshop<",
                   "<key>CFBundleExecutable</key>\n\t<string>Other<"),
              HasSubstr("Contents/MacOS/Other, which Contents/Info.plist asks for, is not there"));
  EXPECT_THAT(with("<string>10.13<", "<string>10.9<"),
              HasSubstr("LSMinimumSystemVersion is \"10.9\", the binary needs 10.13"));
}

TEST_F(CopiedBundle, FailsInfoPlistIfItCannotBeRead) {
  EXPECT_THAT(with("</dict>", ""), HasSubstr("failed: " + file("Info.plist") + ":"));
  std::filesystem::remove(file("Info.plist"));
  EXPECT_THAT(reasonOf("info-plist", path_), HasSubstr("Info.plist cannot be read"));
}

TEST_F(CopiedBundle, FailsPkgInfoIfItIsNotEightBytes) {
  EXPECT_THAT(withPackageInfo("8LIZ8BIM\n"),
              HasSubstr("failed: PkgInfo has 9 bytes; 8 are allowed"));
  std::filesystem::remove(file("PkgInfo"));
  EXPECT_THAT(reasonOf("pkg-info", path_), HasSubstr("failed: Contents/PkgInfo is not there"));
}

TEST_F(CopiedBundle, FailsPkgInfoIfInfoPlistSaysOtherwise) {
  EXPECT_THAT(withPackageInfo("BNDL8BIM"),
              HasSubstr("PkgInfo says \"BNDL\", CFBundlePackageType in Info.plist is \"8LIZ\""));
  EXPECT_THAT(withPackageInfo("8LIZ????"),
              HasSubstr("PkgInfo says \"????\", CFBundleSignature in Info.plist is \"8BIM\""));
}

TEST_F(CopiedBundle, PassesUnderAnotherName) {
  EXPECT_THAT(reasonOf("info-plist", path_), HasSubstr("1 passed"));
  EXPECT_THAT(reasonOf("pkg-info", path_), HasSubstr("1 passed"));
  EXPECT_THAT(reasonOf("whole-day", path_), HasSubstr("1 passed"));
}

TEST(CheckBundle, DoesNotApplyToABinaryAlone) {
  for (const char* const check : {"info-plist", "pkg-info", "resource"}) {
    EXPECT_THAT(reasonOf(check, MRV_BUNDLE "/Contents/MacOS/MrvPhotoshop"),
                HasSubstr("not applicable: a file without its bundle"));
    EXPECT_THAT(reasonOf(check, MODULE), HasSubstr("not applicable: not built for the Mac"));
  }
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

TEST(CheckResource, FailsIfTheCodeForOneProcessorIsNotNamed) {
  const Finished intel = BundleWith(description("8BIM mi64", "8BIM xxxx")).check();
  EXPECT_EQ(intel.status, 1);
  EXPECT_THAT(intel.output, HasSubstr("x86_64: the description has no 64-bit Intel code"));
  const Finished arm64 = BundleWith(description("8BIM ma64", "8BIM xxxx")).check();
  EXPECT_EQ(arm64.status, 1);
  EXPECT_THAT(arm64.output, HasSubstr("arm64: the description has no arm64 code"));
}

// The shipped binary with other bytes in its code for arm64, which does not run here.
class BinaryWith {
 public:
  BinaryWith(const std::string& from, const std::string& to) : path_(folder_.file("MrvPhotoshop")) {
    std::string bytes = testing_support::readFile(MRV_BUNDLE "/Contents/MacOS/MrvPhotoshop");
    const std::size_t place = bytes.rfind(from);
    EXPECT_NE(place, std::string::npos) << from;
    bytes.replace(place, from.size(), to);
    testing_support::writeFile(path_, bytes);
  }

  std::string reason(const char* check) const { return reasonOf(check, path_); }

 private:
  TemporaryFolder folder_;
  std::string path_;
};

TEST(CheckOnEachProcessor, JudgesTheCodeThatDoesNotRunHere) {
  EXPECT_THAT(BinaryWith("/usr/lib/libc++.1", "/usr/lib/liby++.1").reason("load-commands"),
              HasSubstr("failed: arm64: loads /usr/lib/liby++.1.dylib"));
  EXPECT_THAT(BinaryWith({"\xFA\xDE\x0C\xC0", 4}, "none").reason("signature"),
              HasSubstr("failed: arm64: has a signature of an unknown kind (0x6e6f6e65)"));
  // The command and its size, the platform, and the system in fields of 16, 8 and 8 bits.
  const std::string version("\x32\0\0\0\x20\0\0\0\x01\0\0\0\0\0\x0B\0", 16);
  EXPECT_THAT(BinaryWith(version, version.substr(0, 12) + std::string("\0\x01\x0B\0", 4))
                  .reason("minimum-system"),
              HasSubstr("failed: arm64: needs macOS 11.1"));
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
  const Json report = jsonOf(checked.output);
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
  const Json report = jsonOf(checked.output);
  ASSERT_EQ(report["checks"].size(), 1U);
  EXPECT_EQ(report["checks"][0]["name"], "load-time");
}

TEST(Check, DoesNotPassIfNothingApplies) {
  EXPECT_EQ(run({MRVSIM, "check", MODULE, "--only", "exports"}).status, 1);
}

TEST(Check, RejectsAFileThatCannotBeLoaded) {
  const TemporaryFolder folder;
  testing_support::writeFile(folder.file("text.so"), "no module");
  const Finished checked = run({MRVSIM, "check", folder.file("text.so")});
  EXPECT_EQ(checked.status, 2);
  EXPECT_EQ(checked.output, "");
  EXPECT_THAT(checked.errors, HasSubstr("text.so: "));
}

TEST(Check, RejectsAMissingFileAndAnUnknownName) {
  const Finished missing = run({MRVSIM, "check", "/nowhere/at/all"});
  EXPECT_EQ(missing.status, 2);
  EXPECT_THAT(missing.errors, HasSubstr("/nowhere/at/all: cannot be read: No such file"));
  const Finished unknown = run({MRVSIM, "check", MODULE, "--only", "taste"});
  EXPECT_EQ(unknown.status, 2);
  EXPECT_THAT(unknown.errors, HasSubstr("--only taste: there is no such check"));
  EXPECT_EQ(run({MRVSIM, "check"}).status, 2);
}

}  // namespace
