// A platform that answers with lengths that no path has, and that resolves no alias. This program
// defines the platform's functions that do so itself.
#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>
#include <gtest/gtest.h>

#include <limits>

#include "codegen/PathConversion.h"
#include "simulator/macos/Folders.h"

namespace {

constexpr CFIndex kLast = std::numeric_limits<CFIndex>::max();
constexpr CFIndex kFirst = std::numeric_limits<CFIndex>::min();

CFIndex pathCount = 1;
CFIndex textLength = 13;
CFIndex maximumSize = 39;
int pathsAsked = 0;

class PathConversionLengths : public testing::Test {
 protected:
  PathConversionLengths() { simulator::setHomeFolder("/home"); }

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
CFIndex CFArrayGetCount(CFArrayRef) { return pathCount; }
CFIndex CFStringGetLength(CFStringRef) { return textLength; }
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding) {
  EXPECT_EQ(length, textLength);
  return maximumSize;
}
