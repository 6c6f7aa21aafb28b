// The files that paths and aliases name.
#include <gtest/gtest.h>

#include <string>

#include "actionfiles/FilePath.h"

using namespace actionfiles;

namespace {

std::string path(const std::string& count, const std::string& units) {
  return "txtu" + std::string(4, '\0') + count + units;
}

std::string alias(char version, const std::string& name, std::size_t size = 150) {
  std::string bytes(size, '\0');
  bytes[7] = version;
  bytes.replace(50, 1 + name.size(), static_cast<char>(name.size()) + name);
  return bytes;
}

}  // namespace

TEST(FilePath, IsTheTextOfAPathItem) {
  EXPECT_EQ(pathOf(path({"\4\0\0\0", 4}, {"/\0\xE4\0\x3D\xD8\x00\xDE", 8}))->utf8,
            "/\u00E4\U0001F600");
  EXPECT_EQ(pathOf(path({"\2\0\0\0", 4}, {"/\0a\0more", 8}))->utf8, "/a");
  EXPECT_EQ(pathOf(path({"\0\0\0\0", 4}, ""))->utf8, "");
}

TEST(FilePath, IsRefusedIfAPathItemIsOfAnotherForm) {
  EXPECT_FALSE(pathOf(""));
  EXPECT_FALSE(pathOf("txtu\0\0\0\0"));
  EXPECT_FALSE(pathOf(path({"\3\0\0\0", 4}, {"/\0a\0", 4})));
  EXPECT_FALSE(pathOf(path({"\xFF\xFF\xFF\xFF", 4}, {"/\0a\0", 4})));
  EXPECT_FALSE(pathOf("unix" + std::string(8, '\0')));
}

TEST(FilePath, OfAnAliasOfVersionTwoIsTheFilesName) {
  EXPECT_EQ(fileNameOfAlias(alias(2, "B\x9A.psd"))->utf8, "B\u00F6.psd");
  EXPECT_EQ(fileNameOfAlias(alias(2, ""))->utf8, "");
  EXPECT_EQ(fileNameOfAlias(alias(2, std::string(63, 'x')))->utf8, std::string(63, 'x'));
}

TEST(FilePath, IsRefusedIfAnAliasIsOfAnotherForm) {
  EXPECT_FALSE(fileNameOfAlias(alias(3, "a.psd")));
  EXPECT_FALSE(fileNameOfAlias(alias(2, std::string(64, 'x'))));
  EXPECT_FALSE(fileNameOfAlias(alias(2, "a.psd").substr(0, 55)));
  EXPECT_FALSE(fileNameOfAlias(alias(2, "a.psd").substr(0, 50)));
  EXPECT_FALSE(fileNameOfAlias(""));
}
