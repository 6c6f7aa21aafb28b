// A platform that answers with lengths that no path has, with empty paths and with none, and that
// resolves no alias. This program defines the platform's functions that do so itself.
#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>
#include <gtest/gtest.h>

#include <limits>
#include <optional>

#include "codegen/PathConversion.h"
#include "platform/foundation/FoundationCalls.h"
#include "simulator/macos/CFObjects.h"

namespace {

constexpr CFIndex kLast = std::numeric_limits<CFIndex>::max();
constexpr CFIndex kFirst = std::numeric_limits<CFIndex>::min();

bool hasPaths = true;
CFStringRef desktop = simulator::constantCFString("/home/Desktop");
CFIndex pathCount = 1;
CFIndex textLength = 13;
CFIndex maximumSize = 39;
int pathsAsked = 0;

class PathConversionLengths : public testing::Test {
 protected:
  static void expectNoDesktop(CFIndex answer) {
    char path[64] = "old";
    EXPECT_EQ(GetFullPathToDesktop(path, sizeof path), 0x5061726D) << answer;
    EXPECT_STREQ(path, "") << answer;
  }
};

TEST_F(PathConversionLengths, LetAPathThatIsAsLongAsItsLengthPass) {
  char path[64];
  EXPECT_EQ(GetFullPathToDesktop(path, sizeof path), 0);
  EXPECT_STREQ(path, "/home/Desktop/");
}

TEST_F(PathConversionLengths, AreErrorsIfTheSizeIsNegativeOrNoPathsSize) {
  for (const CFIndex size : {CFIndex{kCFNotFound}, CFIndex{-2}, kFirst, kLast, kLast - 1,
                             CFIndex{1} << 40, (CFIndex{1} << 20) + 1}) {
    maximumSize = size;
    expectNoDesktop(size);
  }
}

TEST_F(PathConversionLengths, AreErrorsIfTheTextIsLongerThanReported) {
  for (const CFIndex size : {0, 1, 12}) {
    maximumSize = size;
    expectNoDesktop(size);
  }
}

TEST_F(PathConversionLengths, AreErrorsIfTheNumberOfPathsIsNotPositive) {
  for (const CFIndex count : {CFIndex{0}, CFIndex{kCFNotFound}, kFirst}) {
    pathCount = count;
    expectNoDesktop(count);
  }
}

TEST_F(PathConversionLengths, LetAnEmptyPathPass) {
  desktop = simulator::constantCFString("");
  textLength = 0;
  maximumSize = 0;
  char path[64] = "old";
  EXPECT_EQ(GetFullPathToDesktop(path, sizeof path), 0);
  EXPECT_STREQ(path, "/");
}

TEST_F(PathConversionLengths, AreErrorsIfThereIsNoListOfPaths) {
  hasPaths = false;
  expectNoDesktop(0);
}

TEST(PathConversionOfAnAlias, HasNoPathIfThePlatformReturnsAnEmptyOne) {
  textLength = 0;
  maximumSize = 0;
  EXPECT_EQ(pathInAlias(nullptr), std::nullopt);
}

TEST(PathConversionOfAnAlias, AsksForNoPathIfTheAliasCannotBeResolved) {
  char path[64] = "old";
  AliasToFullPath(nullptr, path, sizeof path);
  EXPECT_STREQ(path, "");
  EXPECT_EQ(pathsAsked, 0);
}

}  // namespace

OSErr FSResolveAlias(const FSRef*, AliasHandle, FSRef*, Boolean*) { return fnfErr; }
OSStatus FSRefMakePath(const FSRef*, UInt8* path, UInt32) {
  ++pathsAsked;
  path[0] = '/';
  return noErr;
}
OSStatus FSCopyAliasInfo(AliasHandle, HFSUniStr255*, HFSUniStr255*, CFStringRef* path,
                         FSAliasInfoBitmap*, FSAliasInfo*) {
  *path = simulator::makeCFString("");
  return noErr;
}
extern "C" CFArrayRef NSSearchPathForDirectoriesInDomains(unsigned long, unsigned long, BOOL) {
  static const CFTypeRef paths = simulator::theCFObjects().makeConstant(simulator::CFList{});
  return hasPaths ? static_cast<CFArrayRef>(paths) : nullptr;
}
CFIndex CFArrayGetCount(CFArrayRef) { return pathCount; }
const void* CFArrayGetValueAtIndex(CFArrayRef, CFIndex) { return desktop; }
CFIndex CFStringGetLength(CFStringRef) { return textLength; }
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding) {
  EXPECT_EQ(length, textLength);
  return maximumSize;
}
