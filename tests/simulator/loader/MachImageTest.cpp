#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "simulator/loader/MachImage.h"
#include "simulator/loader/UnwindInfo.h"
#include "tests/simulator/loader/Modules.h"

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string errorOfLoading(const std::string& name) {
  try {
    loadModule(name);
  } catch (const LoadError& error) {
    return error.what();
  }
  return "";
}

int call(const MachImage& image, const char* name) { return function<int()>(image, name)(); }

// The modules have the same functions, compiled to different kinds of frames.
class MachImageExceptions : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override { image_ = loadModule(GetParam()); }
  int call(const char* name) { return simulator::call(*image_, name); }

  std::unique_ptr<MachImage> image_;
};

INSTANTIATE_TEST_SUITE_P(Frames, MachImageExceptions,
                         testing::Values("Exceptions", "ExceptionsFrameless"),
                         [](const auto& frames) { return std::string(frames.param); });

TEST_P(MachImageExceptions, CrossTheImagesOwnFramesAndRunItsCleanups) {
  EXPECT_EQ(call("catchesOwnException"), 7);
  EXPECT_THAT(record(), ElementsAre(101, 102, 100));
}

TEST_P(MachImageExceptions, AreCaughtAsTheirBaseClass) {
  EXPECT_EQ(call("catchesBySuperclass"), 2);
}

TEST_P(MachImageExceptions, CanBeRethrown) {
  EXPECT_EQ(call("rethrows"), 7);
  EXPECT_THAT(record(), ElementsAre(101, 200));
}

TEST_P(MachImageExceptions, CrossAFrameTooLargeForItsEncoding) {
  EXPECT_EQ(call("catchesThroughPlainLargeFrame"), 7);
}

TEST_P(MachImageExceptions, LeaveTheImage) {
  auto* const thrower = function<void()>(*image_, "letsExceptionOut");
  EXPECT_THROW(thrower(), std::uint32_t);
  EXPECT_THAT(record(), ElementsAre(101, 102));
}

TEST_P(MachImageExceptions, ThrownByTheHostAreCaughtInTheImage) {
  EXPECT_EQ(call("catchesHostException"), 9);
  EXPECT_THAT(record(), ElementsAre(300));
}

TEST_P(MachImageExceptions, ThrownByTheHostPassThroughTheImage) {
  auto* const passer = function<void()>(*image_, "passesHostExceptionOn");
  EXPECT_THROW(passer(), int);
  EXPECT_THAT(record(), ElementsAre(400));
}

TEST_P(MachImageExceptions, CrossHostFramesBetweenFramesOfTheImage) {
  EXPECT_EQ(call("catchesAcrossHostFrames"), 7);
  EXPECT_THAT(record(), ElementsAre(101));
}

TEST_P(MachImageExceptions, ThrownByTheRunTimeAreCaught) {
  EXPECT_EQ(call("throwsFromLibrary"), 1);
}

TEST_P(MachImageExceptions, AreCaughtByATypeThatOtherFilesMayHave) {
  EXPECT_EQ(call("catchesBySharedSuperclass"), 4);
}

TEST_P(MachImageExceptions, RestoreCalleeSavedRegisters) {
  auto* const keeper = function<long()>(*image_, "keepsRegistersAfterThrow");
  EXPECT_EQ(keeper(),
            11 + 100 * 13 + 10000 * 17 + 1000000 * 19 + 100000000L * 23 + 10000000000L * 29);
}

TEST_P(MachImageExceptions, RestoreCalleeSavedVectorRegisters) {
  EXPECT_EQ(function<double()>(*image_, "keepsVectorRegistersAfterThrow")(), 87654321.0);
}

TEST(MachImageFrames, UnwindByTheirOwnDwarfEntry) {
  const auto image = loadModule("HandWrittenFrame");
  EXPECT_EQ(function<long()>(*image, "throwsThroughOddFrame")(), 779);
}

// The tests above cover a kind of frame only if the compiler produced it.
TEST(MachImageFrames, OccurInEveryKindInTheTestModules) {
  std::set<FrameKind> kinds;
  for (const char* const name : {"Exceptions", "ExceptionsFrameless"}) {
    const MachFile file = MachFile::open(modulePath(name));
    const Section& table = *file.findSection("__TEXT", "__unwind_info");
    for (const UnwindEntry& entry : readUnwindInfo(file.contents(table))) {
      kinds.insert(decodeFrame(entry.encoding, file.processor()).kind);
    }
  }
  // On arm64 the size of the stack is never in the code.
  EXPECT_EQ(kinds.size(), ownProcessor() == mach::kArm64 ? 3u : 4u);
}

TEST(MachImageLifetime, RunsInitialisersInOrderAtLoad) {
  const auto image = loadModule("Lifetime");
  EXPECT_THAT(record(), ElementsAre(1, 2));
}

TEST(MachImageLifetime, RunsInitialisersThatAreGivenAsOffsets) {
  EXPECT_NE(MachFile::open(modulePath("InitOffsets")).findSection("__TEXT", "__init_offsets"),
            nullptr);
  auto image = loadModule("InitOffsets");
  EXPECT_THAT(record(), ElementsAre(1, 2));
  record().clear();
  image.reset();
  EXPECT_THAT(record(), ElementsAre(-2, -1));
}

TEST(MachImageLifetime, RefusesInitialisersOutsideTheCode) {
  std::vector<std::byte> bytes = moduleBytes("InitOffsets");
  const MachFile file(bytes);
  const Section& offsets = *file.findSection("__TEXT", "__init_offsets");
  std::memset(bytes.data() + offsets.fileOffset, 0x7F, 4);
  EXPECT_THROW(MachImage::prepare(MachFile(bytes), TestLibraries(), "changed"), LoadError);
}

TEST(MachImageLifetime, RunsDestructorsInReverseAtUnload) {
  auto image = loadModule("Lifetime");
  EXPECT_EQ(call(*image, "firstUse"), 30);
  EXPECT_EQ(call(*image, "firstUse"), 30);
  record().clear();
  image.reset();
  EXPECT_THAT(record(), ElementsAre(-30, -2, -1));
}

// Constructed before the image is loaded, hence destroyed after the image's objects.
struct ExitReporter {
  ~ExitReporter() {
    for (const int value : record()) std::fprintf(stderr, "%d ", value);
  }
};

[[noreturn]] void exitWithImageLoaded() {
  static const ExitReporter reporter;
  const MachImage* const image = loadModule("Lifetime").release();
  call(*image, "firstUse");
  record().clear();
  std::exit(0);
}

TEST(MachImageLifetime, RunsDestructorsAtExitIfTheImageIsStillLoaded) {
  EXPECT_EXIT(exitWithImageLoaded(), testing::ExitedWithCode(0), "^-30 -2 -1 $");
}

TEST(MachImageLifetime, IsSeparateForTwoImagesOfOneFile) {
  auto one = loadModule("Lifetime");
  const auto two = loadModule("Lifetime");
  EXPECT_NE(one->symbol("answer"), two->symbol("answer"));
  record().clear();
  one.reset();
  EXPECT_THAT(record(), ElementsAre(-2, -1));
}

TEST(MachImageLifetime, RunsNothingIfTheImageWasOnlyPrepared) {
  MachImage::prepare(MachFile::open(modulePath("Lifetime")), TestLibraries(), "Lifetime").reset();
  EXPECT_THAT(record(), IsEmpty());
}

TEST(MachImage, RebasesItsPointers) {
  EXPECT_EQ(call(*loadModule("Lifetime"), "sumThroughPointers"), 73);
}

TEST(MachImage, ExportsFunctionsAndVariablesByTheirCNames) {
  const auto image = loadModule("Lifetime");
  EXPECT_EQ(*static_cast<int*>(image->symbol("answer")), 42);
  EXPECT_EQ(image->symbol("first"), nullptr);
  EXPECT_EQ(image->exports().count("_firstUse"), 1u);
}

TEST(MachImageImports, AreNullIfTheirWeakFrameworkIsMissing) {
  EXPECT_FALSE(function<bool()>(*loadModule("Imports"), "seesAbsentFramework")());
}

TEST(MachImageImports, PassArgumentsToVariadicFunctions) {
  const auto image = loadModule("Imports");
  char buffer[64] = {};
  EXPECT_EQ(function<int(char*, std::size_t)>(*image, "formats")(buffer, sizeof buffer), 24);
  EXPECT_STREQ(buffer, "7 text 2.500 -9000000000");
  EXPECT_EQ(function<int(char*, std::size_t)>(*image, "formatsList")(buffer, sizeof buffer), 9);
  EXPECT_STREQ(buffer, "1 2.5 xyz");
  EXPECT_EQ(function<int()>(*image, "scans")(), 42);
}

TEST(MachImageImports, PrintToTheStandardOutputOfTheProcess) {
  const auto image = loadModule("Imports");
  testing::internal::CaptureStdout();
  call(*image, "printsToStandardOutput");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "from the module 3\n");
}

TEST(MachImageImports, IncludeTheCompilersHelpers) {
  const auto image = loadModule("Imports");
  std::vector<double> numbers(101, 0.0);
  function<void(double*, int)>(*image, "fillsWithPattern")(numbers.data(), 100);
  EXPECT_TRUE(std::all_of(numbers.begin(), numbers.end() - 1, [](double n) { return n == 1.25; }));
  EXPECT_EQ(numbers.back(), 0.0);
  char block[40];
  std::memset(block, 1, sizeof block);
  function<void(char*, std::size_t)>(*image, "clears")(block, sizeof block - 1);
  EXPECT_EQ(std::count(block, block + sizeof block, '\0'), 39);
}

std::string textFrom(const MachImage& image, const char* name) {
  char buffer[400] = {};
  function<int(char*, std::size_t)>(image, name)(buffer, sizeof buffer);
  return buffer;
}

class MachImageCxxLibrary : public testing::Test {
 protected:
  void SetUp() override {
    if (ownProcessor() == mach::kArm64) GTEST_SKIP() << "strings have another layout there";
  }
};

TEST_F(MachImageCxxLibrary, ServesCodeThatIsOutOfLine) {
  const auto image = loadModule("CxxLibrary");
  EXPECT_EQ(textFrom(*image, "joinsStrings"),
            "<> a string larger than what fits into the object itself, appended!!42..");
  EXPECT_EQ(call(*image, "comparesStrings"), 1);
  EXPECT_EQ(call(*image, "sortsVector"), 999);
  EXPECT_EQ(call(*image, "readsNumbers"), 62);
  EXPECT_EQ(call(*image, "sharesObjects"), 9);
}

TEST_F(MachImageCxxLibrary, ThrowsWhatTheModuleCatchesByItsBaseClasses) {
  EXPECT_EQ(textFrom(*loadModule("CxxLibrary"), "namesExceptions"),
            "runtime: thrown: eeeeeeeeeeeeeeeeeeeeeeeeeeeeee|logic: eeeeeeeeeeeeeeeeeeeeeeeeeeeeee|"
            "logic: basic_string|logic: stoi: no conversion|"
            "runtime: opening: No such file or directory");
}

TEST_F(MachImageCxxLibrary, ThrowsWhatTheHostCatches) {
  const auto image = loadModule("CxxLibrary");
  try {
    function<void()>(*image, "throwsToHost")();
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "out of the module");
  }
}

TEST_F(MachImageCxxLibrary, RefusesLocks) {
  EXPECT_THAT(errorOfLoading("Locks"), HasSubstr("import __ZNSt3__15mutex"));
  EXPECT_THAT(errorOfLoading("Locks"), HasSubstr("is not supported: the C++ library's threads"));
}

TEST(MachImageCxxLibraryOnArm64, RefusesStrings) {
  if (ownProcessor() != mach::kArm64) GTEST_SKIP() << "only there";
  EXPECT_THAT(errorOfLoading("CxxLibrary"),
              HasSubstr("is not supported: the C++ library's strings have another layout"));
}

TEST(MachImageRefusal, NamesAMissingSymbolAndItsLibrary) {
  EXPECT_EQ(errorOfLoading("MissingSymbol"),
            "Symbol not found: _testAddedLater, referenced from: " +
                modulePath("MissingSymbol").string() + ", expected in: /usr/lib/libTestHost.dylib");
}

TEST(MachImageRefusal, NamesAMissingLibrary) {
  EXPECT_EQ(errorOfLoading("MissingLibrary"),
            "Library not loaded: /usr/lib/libElsewhere.dylib, referenced from: " +
                modulePath("MissingLibrary").string() + ", reason: image not found");
}

TEST(MachImageRefusal, CoversThreadLocalVariables) {
  EXPECT_THAT(errorOfLoading("ThreadLocal"), HasSubstr("__thread"));
}

TEST(MachImageRefusal, CoversChainedFixups) {
  EXPECT_THAT(errorOfLoading("ChainedFixups"),
              HasSubstr("load command LC_DYLD_CHAINED_FIXUPS (0x80000034) is not supported"));
}

TEST(MachImageRefusal, NamesAMissingFile) {
  EXPECT_THAT(errorOfLoading("Nothing"), HasSubstr("Nothing.bundle cannot be read"));
}

TEST(MachImageRefusal, GivesTheReasonForFilesOfOtherFormats) {
  const auto error = [](std::vector<std::byte> bytes) {
    try {
      const MachFile file(std::move(bytes));
    } catch (const LoadError& caught) {
      return std::string(caught.what());
    }
    return std::string();
  };
  std::vector<std::byte> bytes = moduleBytes("Imports");
  bytes[0] = std::byte{0x7F};
  EXPECT_EQ(error(bytes),
            "the file is a file of an unknown format; a 64-bit Mach-O file for x86_64 is needed");
  std::memcpy(bytes.data(), "\xCA\xFE\xBA\xBE", 4);
  EXPECT_THAT(error(bytes), HasSubstr("universal"));
  bytes = moduleBytes("Imports");
  bytes[4] = std::byte{0x0C};
  EXPECT_EQ(error(bytes),
            "the file is a Mach-O file for arm64; a 64-bit Mach-O file for x86_64 is needed");
  bytes = moduleBytes("Imports");
  bytes[12] = std::byte{2};
  EXPECT_THAT(error(bytes), HasSubstr("an executable"));
}

TEST(MachImageFile, ReportsMinimumSystemTypeAndLibraries) {
  const MachFile file = MachFile::open(modulePath("Imports"));
  EXPECT_EQ(file.minimumSystem(), ownProcessor() == mach::kArm64 ? "11.0" : "10.13");
  EXPECT_EQ(file.fileType(), mach::kTypeBundle);
  EXPECT_EQ(file.libraries().at(0).name, "/Library/Frameworks/Absent.framework/Absent");
  EXPECT_TRUE(file.libraries().at(0).weak);
}

}  // namespace
}  // namespace simulator
