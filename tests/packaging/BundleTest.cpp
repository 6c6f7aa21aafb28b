#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <regex>
#include <set>
#include <string>
#include <vector>

#include "packaging/resource/HostDescription.h"
#include "simulator/loader/ExportTrie.h"
#include "simulator/loader/MachFile.h"
#include "tests/packaging/Bundle.h"

namespace {

using simulator::MachFile;
using testing::Pair;
using testing::UnorderedElementsAre;

MachFile binary() { return MachFile::open(bundleFile("MacOS/MrvPhotoshop")); }

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
  EXPECT_EQ(property("LSMinimumSystemVersion"), binary().minimumSystem());
  EXPECT_EQ(property("CFBundlePackageType") + property("CFBundleSignature"),
            readText(bundleFile("PkgInfo")));
  EXPECT_EQ(property("CFBundleSignature"), "8BIM");
  EXPECT_EQ(readText(bundleFile("Info.plist")).find('@'), std::string::npos);
}

TEST(BundleBinary, IsABundleForTheOldestSystem) {
  EXPECT_EQ(binary().fileType(), simulator::mach::kTypeBundle);
  EXPECT_EQ(binary().minimumSystem(), "10.13");
}

TEST(BundleBinary, ExportsOnlyTheEntryPoint) {
  const MachFile file = binary();
  const auto exports = simulator::readExportTrie(file.exportTrie());
  ASSERT_EQ(exports.size(), 1u);
  EXPECT_EQ(exports.begin()->first, "_AutoPluginMain");
}

TEST(BundleBinary, IsSmallerThan96KiB) {
  EXPECT_LT(std::filesystem::file_size(bundleFile("MacOS/MrvPhotoshop")), 96u * 1024);
}

TEST(BundleBinary, LoadsSystemLibrariesAndWeaklyTheDeviceFramework) {
  std::vector<std::pair<std::string, bool>> libraries;
  const MachFile file = binary();
  for (const simulator::Library& library : file.libraries()) {
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

TEST(BundleBinary, HasNoSegmentThatIsWritableAndExecutable) {
  const MachFile file = binary();
  for (const simulator::Segment& segment : file.segments()) {
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

TEST(BundleResources, NameTheExportedEntryPoint) {
  const auto resources = readResourceFork(readText(bundleFile("Resources/MrvPhotoshop.rsrc")));
  const auto properties = readHostProperties(resources.at(0));
  const HostProperty* const code = findHostProperty(properties, kCodeMacIntel64Property);
  ASSERT_NE(code, nullptr);
  const MachFile file = binary();
  EXPECT_EQ(simulator::readExportTrie(file.exportTrie()).count("_" + entryPointOf(*code)), 1u);
}

}  // namespace
