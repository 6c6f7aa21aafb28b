#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "simulator/macos/Aliases.h"
#include "simulator/macos/MemoryHandles.h"

namespace simulator {
namespace {

/// The path that an alias record holds; "none" if it holds none.
std::string pathInRecord(AliasHandle alias) {
  CFStringRef path = nullptr;
  EXPECT_EQ(FSCopyAliasInfo(alias, nullptr, nullptr, &path, nullptr, nullptr), noErr);
  if (path == nullptr) return "none";
  char buffer[64];
  EXPECT_TRUE(CFStringGetCString(path, buffer, sizeof buffer, kCFStringEncodingUTF8));
  CFRelease(path);
  return buffer;
}

TEST(Aliases, SayTheirPathWhetherTheFileExistsOrNot) {
  const AliasHandle alias = makeAlias("/no/such/file", nullptr);
  EXPECT_EQ(pathInRecord(alias), "/no/such/file");
  EXPECT_EQ(FSCopyAliasInfo(alias, nullptr, nullptr, nullptr, nullptr, nullptr), noErr);
  CFStringRef path = nullptr;
  EXPECT_EQ(FSCopyAliasInfo(nullptr, nullptr, nullptr, &path, nullptr, nullptr), paramErr);
}

TEST(Aliases, AreCopiedByteByByte) {
  Handle copy = nullptr;
  ASSERT_EQ(PtrToHand("a\0b", &copy, 3), noErr);
  const auto alias = reinterpret_cast<AliasHandle>(copy);
  EXPECT_EQ(GetAliasSize(alias), 3);
  EXPECT_EQ(std::memcmp(*copy, "a\0b", 3), 0);
  EXPECT_EQ(pathInRecord(alias), "none");
  theMemoryHandles().dispose(copy, "test");
  EXPECT_EQ(GetAliasSize(alias), 0);
}

}  // namespace
}  // namespace simulator
