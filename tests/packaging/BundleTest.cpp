#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <regex>
#include <set>
#include <string>
#include <vector>

#include "packaging/resource/HostDescription.h"
#include "simulator/loader/ExportTrie.h"
#include "simulator/loader/FileKind.h"
#include "simulator/loader/MachFile.h"
#include "tests/packaging/Bundle.h"

namespace {

using simulator::MachFile;
using simulator::mach::kArm64;
using simulator::mach::kX86_64;
using testing::Pair;
using testing::UnorderedElementsAre;

MachFile binaryFor(simulator::mach::Processor processor) {
  return MachFile::open(bundleFile("MacOS/MrvPhotoshop"), processor);
}

// The string value of a key in the bundle's property list.
std::string property(const std::string& key) {
  static const std::string plist = readText(bundleFile("Info.plist"));
  std::smatch match;
  const std::regex pattern("<key>" + key + "</key>\\s*<string>([^<]*)</string>");
  return std::regex_search(plist, match, pattern) ? match[1].str() : "(missing)";
}

TEST(Bundle, HasItsFourFilesAndNoOther) {
  std::set<std::string> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(MRV_BUNDLE)) {
    if (entry.is_regular_file()) files.insert(entry.path().lexically_relative(MRV_BUNDLE));
  }
  EXPECT_THAT(files, UnorderedElementsAre("Contents/Info.plist", "Contents/PkgInfo",
                                          "Contents/MacOS/MrvPhotoshop",
                                          "Contents/Resources/MrvPhotoshop.rsrc"));
}

TEST(Bundle, HasAPropertyListWithIdentifierVersionAndType) {
  EXPECT_EQ(property("CFBundleExecutable"), "MrvPhotoshop");
  EXPECT_EQ(property("CFBundleIdentifier"), "com.moravin.mrvphotoshop");
  EXPECT_EQ(property("CFBundleShortVersionString"), MRV_VERSION);
  EXPECT_EQ(property("CFBundleVersion"), MRV_VERSION);
  EXPECT_EQ(property("LSMinimumSystemVersion"), binaryFor(kX86_64).minimumSystem());
  EXPECT_EQ(property("CFBundlePackageType") + property("CFBundleSignature"),
            readText(bundleFile("PkgInfo")));
  EXPECT_EQ(property("CFBundleSignature"), "8BIM");
  EXPECT_EQ(readText(bundleFile("Info.plist")).find('@'), std::string::npos);
}

// What the binary holds for one processor.
class BundleSlice : public testing::TestWithParam<simulator::mach::Processor> {
 protected:
  const MachFile file_ = binaryFor(GetParam());
};

INSTANTIATE_TEST_SUITE_P(, BundleSlice, testing::Values(kX86_64, kArm64),
                         [](const auto& test) { return simulator::processorName(test.param); });

TEST_P(BundleSlice, IsABundleForTheProcessorsOldestSystem) {
  EXPECT_EQ(file_.fileType(), simulator::mach::kTypeBundle);
  EXPECT_EQ(file_.minimumSystem(), GetParam() == kArm64 ? "11.0" : "10.13");
}

TEST_P(BundleSlice, ExportsOnlyTheEntryPoint) {
  const auto exports = simulator::readExportTrie(file_.exportTrie());
  ASSERT_EQ(exports.size(), 1u);
  EXPECT_EQ(exports.begin()->first, "_AutoPluginMain");
}

TEST_P(BundleSlice, HasNothingThatTheLoaderDoesNotSupport) { EXPECT_EQ(file_.unsupported(), ""); }

TEST(BundleBinary, HasCodeForBothProcessors) {
  EXPECT_THAT(MachFile::processorsOf(bundleFile("MacOS/MrvPhotoshop")),
              testing::ElementsAre(kX86_64, kArm64));
}

TEST(BundleBinary, IsSmallerThan192KiB) {
  EXPECT_LT(std::filesystem::file_size(bundleFile("MacOS/MrvPhotoshop")), 192u * 1024);
}

TEST_P(BundleSlice, LoadsSystemLibrariesAndWeaklyTheDeviceFramework) {
  std::vector<std::pair<std::string, bool>> libraries;
  for (const simulator::Library& library : file_.libraries()) {
    libraries.emplace_back(library.name, library.weak);
  }
  const std::string frameworks = "/System/Library/Frameworks/";
  EXPECT_THAT(
      libraries,
      UnorderedElementsAre(
          Pair("/Library/Frameworks/MoravinClient.framework/Versions/A/MoravinClient", true),
          Pair(frameworks + "AppKit.framework/Versions/C/AppKit", false),
          Pair(frameworks + "Carbon.framework/Versions/A/Carbon", false),
          Pair(frameworks + "CoreFoundation.framework/Versions/A/CoreFoundation", false),
          Pair(frameworks + "CoreGraphics.framework/Versions/A/CoreGraphics", false),
          Pair(frameworks + "CoreServices.framework/Versions/A/CoreServices", false),
          Pair("/usr/lib/libobjc.A.dylib", false), Pair("/usr/lib/libc++.1.dylib", false),
          Pair("/usr/lib/libSystem.B.dylib", false)));
}

TEST(BundleBinary, IsStripped) {
  const std::string bytes = readText(bundleFile("MacOS/MrvPhotoshop"));
  // Names of internal symbols, source files and debug sections must not be in the binary.
  for (const char* const text :
       {"Navigate2D", "deviceHandler", ".cpp", "__debug_", MRV_PACKAGING}) {
    EXPECT_EQ(bytes.find(text), std::string::npos) << text;
  }
}

TEST_P(BundleSlice, HasNoSegmentThatIsWritableAndExecutable) {
  for (const simulator::Segment& segment : file_.segments()) {
    EXPECT_NE(segment.protection & (PROT_WRITE | PROT_EXEC), PROT_WRITE | PROT_EXEC)
        << segment.name;
  }
}

TEST(BundleResources, DescribeAnAutomationPlugInThatStartsWithTheHost) {
  const auto resources = readResourceFork(readText(bundleFile("Resources/MrvPhotoshop.rsrc")));
  ASSERT_EQ(resources.size(), 1u);
  EXPECT_EQ(resources[0].type, kHostResourceType);
  const auto properties = readHostProperties(resources[0]);
  const auto find = [&](std::uint32_t key) { return findHostProperty(properties, key); };
  ASSERT_NE(find(kKindProperty), nullptr);
  EXPECT_EQ(numberOf(*find(kKindProperty)), kAutomationKind);
  ASSERT_NE(find(kMessagesProperty), nullptr);
  EXPECT_EQ(numberOf(*find(kMessagesProperty)), kWantsStartup | kWantsShutdown);
  ASSERT_NE(find(kNameProperty), nullptr);
  EXPECT_EQ(textOf(*find(kNameProperty)), "MrvPhotoshop");
  ASSERT_NE(find(kEnableProperty), nullptr);
  EXPECT_EQ(zeroTerminatedTextOf(*find(kEnableProperty)), "true");
  EXPECT_NE(find(kPersistentProperty), nullptr);
  EXPECT_NE(find(kVersionProperty), nullptr);
  EXPECT_NE(find(kCategoryProperty), nullptr);
}

TEST(BundleResources, NameTheExportedEntryPointForBothProcessors) {
  const auto resources = readResourceFork(readText(bundleFile("Resources/MrvPhotoshop.rsrc")));
  const auto properties = readHostProperties(resources.at(0));
  for (const auto& [key, processor] :
       {std::pair(kCodeMacIntel64Property, kX86_64), std::pair(kCodeMacArm64Property, kArm64)}) {
    const HostProperty* const code = findHostProperty(properties, key);
    ASSERT_NE(code, nullptr);
    const MachFile file = binaryFor(processor);
    EXPECT_EQ(simulator::readExportTrie(file.exportTrie()).count("_" + entryPointOf(*code)), 1u);
  }
}

}  // namespace
