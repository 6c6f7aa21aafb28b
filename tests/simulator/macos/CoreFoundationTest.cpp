#include <CoreFoundation/CoreFoundation.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <set>
#include <sstream>

#include "platform/foundation/FoundationCalls.h"
#include "simulator/base/Log.h"
#include "simulator/macos/Bookmarks.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/FileURLs.h"
#include "simulator/macos/Folders.h"
#include "tests/simulator/macos/cf/Questions.h"
#include "tests/support/Process.h"

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

/// The answers that differ from those of Apple's Core Foundation (cf/README.md) about things of
/// these kinds, at most 20.
std::vector<std::string> differing(const std::vector<std::string>& answers,
                                   const std::set<std::string>& kinds) {
  std::vector<std::string> expected = linesOf(testing_support::readFile(MRV_CF_ANSWERS));
  std::erase_if(expected, [&](const std::string& line) {
    return !kinds.contains(line.substr(0, line.find(' ')));
  });
  EXPECT_FALSE(expected.empty());
  EXPECT_EQ(answers.size(), expected.size());
  std::vector<std::string> wrong;
  for (std::size_t i = 0; i < std::min(answers.size(), expected.size()) && wrong.size() < 20; ++i) {
    if (answers[i] != expected[i]) wrong.push_back(answers[i] + ", but Apple's: " + expected[i]);
  }
  return wrong;
}

/// All objects must be released at the end.
class CoreFoundation : public testing::Test {
 protected:
  CoreFoundation() {
    theLog().setSink([this](const Json& line) {
      if (line.at("what") == "misuse") misuses_.push_back(line.at("text"));
    });
  }
  ~CoreFoundation() override {
    theLog().setSink({});
    EXPECT_EQ(theCFObjects().live(), 0u);
  }

  std::vector<std::string> misuses_;
};

TEST_F(CoreFoundation, ConvertsStringsAsApplesDoes) {
  EXPECT_THAT(differing(answersAboutStrings(), {"string"}), IsEmpty());
  EXPECT_THAT(misuses_, IsEmpty());
}

TEST_F(CoreFoundation, ConvertsEachCharacterAndAccentToMacRomanAsApplesDoes) {
  EXPECT_THAT(differing(answersAboutMacRoman(), {"units", "marks"}), IsEmpty());
}

TEST_F(CoreFoundation, ReportsMaximumSizesAsApplesDoes) {
  EXPECT_THAT(differing(answersAboutLengths(), {"maximum"}), IsEmpty());
}

TEST_F(CoreFoundation, MakesAndReadsFileURLsAsApplesDoes) {
  std::filesystem::current_path(kWorkingFolder);
  EXPECT_THAT(differing(answersAboutPaths(), {"file", "folder"}), IsEmpty());
  EXPECT_THAT(misuses_, IsEmpty());
}

TEST_F(CoreFoundation, RefusesNegativeLengths) {
  const UInt8 byte = 0;
  const UniChar unit = u'a';
  EXPECT_EQ(CFDataCreate(kCFAllocatorDefault, &byte, kCFNotFound), nullptr);
  EXPECT_EQ(CFStringCreateWithCharacters(kCFAllocatorDefault, &unit, kCFNotFound), nullptr);
  EXPECT_EQ(CFURLCreateFromFileSystemRepresentation(kCFAllocatorDefault, &byte, kCFNotFound, 0),
            nullptr);
  EXPECT_THAT(misuses_,
              ElementsAre("CFDataCreate: -1 bytes", "CFStringCreateWithCharacters: -1 characters"));
}

TEST_F(CoreFoundation, ReportsTheMaximumSizeOfTheMostNegativeLengthAsNotFound) {
  EXPECT_EQ(
      CFStringGetMaximumSizeForEncoding(std::numeric_limits<CFIndex>::min(), kCFStringEncodingUTF8),
      kCFNotFound);
}

TEST_F(CoreFoundation, ReportsAnEncodingAndAPathStyleThatAreNotSimulated) {
  const CFStringRef text = makeCFString("a");
  char buffer[] = "old";
  EXPECT_FALSE(CFStringGetCString(text, buffer, sizeof buffer, 0x0600));
  EXPECT_STREQ(buffer, "");
  EXPECT_EQ(CFStringGetMaximumSizeForEncoding(1, 0x0600), kCFNotFound);
  CFRelease(text);
  const CFURLRef url = makeFileURL("/a", false);
  EXPECT_EQ(CFURLCopyFileSystemPath(url, 1), nullptr);
  CFRelease(url);
  EXPECT_THAT(
      misuses_,
      ElementsAre("CFStringGetCString: the encoding 0x600 is not simulated; UTF-8 and Mac Roman "
                  "are",
                  "CFStringGetMaximumSizeForEncoding: the encoding 0x600 is not simulated; UTF-8 "
                  "and Mac Roman are",
                  "CFURLCopyFileSystemPath: the style 1 is not simulated; 0 is"));
}

TEST_F(CoreFoundation, ReportsAnIndexBeyondAnArray) {
  setHomeFolder("/home");
  const CFArrayRef paths =
      NSSearchPathForDirectoriesInDomains(NSDesktopDirectory, NSUserDomainMask, true);
  ASSERT_EQ(CFArrayGetCount(paths), 1);
  EXPECT_EQ(CFArrayGetValueAtIndex(paths, 1), nullptr);
  EXPECT_EQ(CFArrayGetValueAtIndex(paths, kCFNotFound), nullptr);
  EXPECT_THAT(misuses_, ElementsAre("CFArrayGetValueAtIndex: the array has no value 1",
                                    "CFArrayGetValueAtIndex: the array has no value -1"));
}

TEST_F(CoreFoundation, ReportsAnObjectOfAnotherTypeOrAReleasedOne) {
  const CFStringRef text = makeCFString("a");
  EXPECT_EQ(CFURLCopyFileSystemPath(reinterpret_cast<CFURLRef>(text), kCFURLPOSIXPathStyle),
            nullptr);
  CFRelease(text);
  EXPECT_EQ(CFStringGetLength(text), 0);
  CFRelease(text);
  EXPECT_THAT(misuses_, ElementsAre(StartsWith("CFURLCopyFileSystemPath: "),
                                    StartsWith("CFStringGetLength: "), StartsWith("CFRelease: ")));
}

/// The path of the file to which a bookmark of the file or folder at `path` leads; "none" if there
/// is no bookmark.
std::string pathThroughBookmark(const std::string& path) {
  const CFURLRef url = makeFileURL(path, false);
  const CFDataRef bookmark =
      CFURLCreateBookmarkData(kCFAllocatorDefault, url, 0, nullptr, nullptr, nullptr);
  CFRelease(url);
  if (bookmark == nullptr) return "none";
  Boolean isStale = 1;
  const CFURLRef found = CFURLCreateByResolvingBookmarkData(kCFAllocatorDefault, bookmark, 0,
                                                            nullptr, nullptr, &isStale, nullptr);
  CFRelease(bookmark);
  EXPECT_EQ(isStale, 0);
  UInt8 buffer[512];
  EXPECT_TRUE(CFURLGetFileSystemRepresentation(found, true, buffer, sizeof buffer));
  CFRelease(found);
  return reinterpret_cast<const char*>(buffer);
}

TEST_F(CoreFoundation, FindsFilesAndFoldersThroughBookmarks) {
  const testing_support::TemporaryFolder folder;
  testing_support::writeFile(folder.file("\xFF"), "");
  std::filesystem::current_path(folder.file(""));
  const std::string whole = std::filesystem::current_path().string();
  EXPECT_EQ(pathThroughBookmark(whole), whole) << "a folder";
  EXPECT_EQ(pathThroughBookmark(whole + "/\xFF/"), whole + "/\xFF");
  EXPECT_EQ(pathThroughBookmark("./"), whole) << "a relative path";
  EXPECT_EQ(pathThroughBookmark("none"), "none");
}

/// The path that the bookmark data themselves hold; "none" if they hold none.
std::string pathHeldBy(CFDataRef bookmark) {
  const auto path = static_cast<CFStringRef>(CFURLCreateResourcePropertyForKeyFromBookmarkData(
      kCFAllocatorDefault, kCFURLPathKey, bookmark));
  if (path == nullptr) return "none";
  char buffer[512];
  EXPECT_TRUE(CFStringGetCString(path, buffer, sizeof buffer, kCFStringEncodingUTF8));
  CFRelease(path);
  return buffer;
}

TEST_F(CoreFoundation, ReadsThePathThatABookmarkHoldsWhetherItsFileExistsOrNot) {
  const CFDataRef bookmark = makeBookmark("/no/such/\u00E9");
  EXPECT_EQ(pathHeldBy(bookmark), "/no/such/\u00E9");
  EXPECT_EQ(CFURLCreateResourcePropertyForKeyFromBookmarkData(kCFAllocatorDefault, CFSTR("other"),
                                                              bookmark),
            nullptr);
  CFRelease(bookmark);
  const CFDataRef other = makeBookmark("\xFF");
  EXPECT_EQ(pathHeldBy(other), "none") << "not text";
  CFRelease(other);
  EXPECT_EQ(pathHeldBy(nullptr), "none");
}

TEST_F(CoreFoundation, HandsOutTheBytesOfData) {
  const UInt8 bytes[] = {0, 255};
  const CFDataRef data = CFDataCreate(kCFAllocatorDefault, bytes, 2);
  ASSERT_EQ(CFDataGetLength(data), 2);
  EXPECT_EQ(CFDataGetBytePtr(data)[0], 0);
  EXPECT_EQ(CFDataGetBytePtr(data)[1], 255);
  CFRelease(data);
  EXPECT_EQ(CFDataGetLength(data), 0);
  EXPECT_EQ(CFDataGetBytePtr(data), nullptr);
  EXPECT_THAT(misuses_,
              ElementsAre(StartsWith("CFDataGetLength: "), StartsWith("CFDataGetBytePtr: ")));
}

}  // namespace
}  // namespace simulator
