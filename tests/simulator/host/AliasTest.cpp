#include <cstdio>
#include <filesystem>
#include <fstream>

#include "simulator/host/FileReferences.h"
#include "tests/simulator/host/HostFixture.h"

namespace simulator {
namespace {

constexpr DescriptorKeyID kKey = fourCharCode("KeyA");

class AliasTest : public HostTest {
 protected:
  AliasTest() { std::ofstream{path_}; }
  ~AliasTest() override { std::filesystem::remove(path_); }

  const std::string path_ = testing::TempDir() + "alias-test-file";
};

TEST_F(AliasTest, AnAliasKnowsItsPath) {
  AliasHandle alias = nullptr;
  ASSERT_EQ(aliases_->MacNewAliasFromCString(path_.c_str(), &alias), 0);
  EXPECT_EQ(pathOfAlias(alias, "test"), path_);
  handles_->DisposeRegularHandle(reinterpret_cast<Handle>(alias));
}

TEST_F(AliasTest, WhatDoesNotExistHasNoAlias) {
  auto alias = reinterpret_cast<AliasHandle>(this);
  EXPECT_EQ(aliases_->MacNewAliasFromCString("/no/such/file", &alias), -43);
  EXPECT_EQ(alias, nullptr);
  EXPECT_EQ(aliases_->MacNewAliasFromCString(nullptr, &alias), paramErr);
}

TEST_F(AliasTest, AliasItemsHandOutAliasesOfTheirOwn) {
  AliasHandle alias = nullptr;
  aliases_->MacNewAliasFromCString(path_.c_str(), &alias);
  PIActionDescriptor descriptor = descriptorOf("[]");
  EXPECT_EQ(descriptors_->PutAlias(descriptor, kKey, reinterpret_cast<Handle>(alias)), 0);
  handles_->DisposeRegularHandle(reinterpret_cast<Handle>(alias));
  Handle read = nullptr;
  ASSERT_EQ(descriptors_->GetAlias(descriptor, kKey, &read), 0);
  EXPECT_EQ(pathOfAlias(reinterpret_cast<AliasHandle>(read), "test"), path_);
  handles_->DisposeRegularHandle(read);
}

TEST_F(AliasTest, APathItemIsReadAsAnAlias) {
  PIActionDescriptor descriptor =
      descriptorOf(R"([{"key": "KeyA", "type": "Pth ", "value": "/tmp/x"}])");
  Handle read = nullptr;
  ASSERT_EQ(descriptors_->GetAlias(descriptor, kKey, &read), 0);
  EXPECT_EQ(pathOfAlias(reinterpret_cast<AliasHandle>(read), "test"), "/tmp/x");
  handles_->DisposeRegularHandle(read);
}

TEST_F(AliasTest, ABlockThatIsNoAliasHasNoPath) {
  const Handle handle = handles_->New(2);
  EXPECT_EQ(pathOfAlias(reinterpret_cast<AliasHandle>(handle), "test"), std::nullopt);
  EXPECT_EQ(descriptors_->PutAlias(descriptorOf("[]"), kKey, handle), paramErr);
  handles_->Dispose(handle);
}

/// Bookmarks as the simulated platform makes them: here a path in memory.
CFDataRef makeTestBookmark(const std::string& path) {
  return reinterpret_cast<CFDataRef>(new std::string(path));
}

std::optional<std::string> pathOfTestBookmark(CFDataRef bookmark) {
  return *reinterpret_cast<const std::string*>(bookmark);
}

TEST_F(AliasTest, BookmarkItemsGoThroughThePlatform) {
  setBookmarks({makeTestBookmark, pathOfTestBookmark});
  PIActionDescriptor descriptor = descriptorOf("[]");
  const std::string path = "/tmp/x";
  EXPECT_EQ(descriptors_->PutBookmark(descriptor, kKey, reinterpret_cast<CFDataRef>(&path)), 0);
  EXPECT_EQ(textOf(descriptor), R"([{"key":"KeyA","type":"bkmk","value":"/tmp/x"}])");
  CFDataRef read = nullptr;
  ASSERT_EQ(descriptors_->GetBookmark(descriptor, kKey, &read), 0);
  EXPECT_EQ(pathOfTestBookmark(read), "/tmp/x");
  delete reinterpret_cast<const std::string*>(read);
  Handle alias = nullptr;
  EXPECT_EQ(descriptors_->GetAlias(descriptor, kKey, &alias), kWrongDataType);
}

TEST_F(AliasTest, AnAliasItemIsNoBookmark) {
  PIActionDescriptor descriptor =
      descriptorOf(R"([{"key": "KeyA", "type": "alis", "value": "/tmp/x"}])");
  CFDataRef read = nullptr;
  EXPECT_EQ(descriptors_->GetBookmark(descriptor, kKey, &read), kWrongDataType);
}

TEST_F(AliasTest, WithoutThePlatformThereAreNoBookmarks) {
  setBookmarks({});
  PIActionDescriptor descriptor =
      descriptorOf(R"([{"key": "KeyA", "type": "bkmk", "value": "/tmp/x"}])");
  CFDataRef read = nullptr;
  EXPECT_EQ(descriptors_->GetBookmark(descriptor, kKey, &read), paramErr);
  EXPECT_EQ(descriptors_->PutBookmark(descriptor, kKey, nullptr), paramErr);
}

}  // namespace
}  // namespace simulator
