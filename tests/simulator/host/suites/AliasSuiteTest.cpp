#include <CoreFoundation/CoreFoundation.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "simulator/macos/Aliases.h"
#include "simulator/macos/Bookmarks.h"
#include "simulator/macos/MemoryHandles.h"
#include "tests/simulator/host/HostFixture.h"

namespace simulator {
namespace {

constexpr DescriptorKeyID kItemKey = fourCharCode("KeyA");

class AliasSuite : public HostTest {
 protected:
  AliasSuite() { std::ofstream{path_}; }
  ~AliasSuite() override { std::filesystem::remove(path_); }

  const std::string path_ = testing::TempDir() + "alias-test-file";
};

using AliasSuiteItems = AliasSuite;

TEST_F(AliasSuite, MakesAnAliasThatHoldsItsPath) {
  AliasHandle alias = nullptr;
  ASSERT_EQ(aliases_->MacNewAliasFromCString(path_.c_str(), &alias), 0);
  EXPECT_EQ(pathOfAlias(alias, "test"), path_);
  handles_->DisposeRegularHandle(reinterpret_cast<Handle>(alias));
}

TEST_F(AliasSuite, RefusesAFileThatDoesNotExist) {
  auto alias = reinterpret_cast<AliasHandle>(this);
  EXPECT_EQ(aliases_->MacNewAliasFromCString("/no/such/file", &alias), -43);
  EXPECT_EQ(alias, nullptr);
  EXPECT_EQ(aliases_->MacNewAliasFromCString(nullptr, &alias), paramErr);
}

TEST_F(AliasSuiteItems, HandOutANewAlias) {
  AliasHandle alias = nullptr;
  aliases_->MacNewAliasFromCString(path_.c_str(), &alias);
  PIActionDescriptor descriptor = descriptorOf("[]");
  EXPECT_EQ(descriptors_->PutAlias(descriptor, kItemKey, reinterpret_cast<Handle>(alias)), 0);
  handles_->DisposeRegularHandle(reinterpret_cast<Handle>(alias));
  Handle read = nullptr;
  ASSERT_EQ(descriptors_->GetAlias(descriptor, kItemKey, &read), 0);
  EXPECT_EQ(pathOfAlias(reinterpret_cast<AliasHandle>(read), "test"), path_);
  handles_->DisposeRegularHandle(read);
}

TEST_F(AliasSuiteItems, ReadAPathAsAnAlias) {
  PIActionDescriptor descriptor =
      descriptorOf(R"([{"key": "KeyA", "type": "Pth ", "value": "/tmp/x"}])");
  Handle read = nullptr;
  ASSERT_EQ(descriptors_->GetAlias(descriptor, kItemKey, &read), 0);
  EXPECT_EQ(pathOfAlias(reinterpret_cast<AliasHandle>(read), "test"), "/tmp/x");
  handles_->DisposeRegularHandle(read);
}

TEST_F(AliasSuiteItems, RefuseABlockThatIsNotAnAlias) {
  const Handle handle = handles_->New(2);
  EXPECT_EQ(pathOfAlias(reinterpret_cast<AliasHandle>(handle), "test"), std::nullopt);
  EXPECT_EQ(descriptors_->PutAlias(descriptorOf("[]"), kItemKey, handle), paramErr);
  handles_->Dispose(handle);
}

TEST_F(AliasSuiteItems, HoldThePathOfABookmark) {
  PIActionDescriptor descriptor = descriptorOf("[]");
  const CFDataRef put = makeBookmark("/tmp/x");
  EXPECT_EQ(descriptors_->PutBookmark(descriptor, kItemKey, put), 0);
  CFRelease(put);
  EXPECT_EQ(textOf(descriptor), R"([{"key":"KeyA","type":"bkmk","value":"/tmp/x"}])");
  CFDataRef read = nullptr;
  ASSERT_EQ(descriptors_->GetBookmark(descriptor, kItemKey, &read), 0);
  EXPECT_EQ(pathOfBookmark(read), "/tmp/x");
  CFRelease(read);
  Handle alias = nullptr;
  EXPECT_EQ(descriptors_->GetAlias(descriptor, kItemKey, &alias), kWrongDataType);
}

TEST_F(AliasSuiteItems, KeepTheBytesOfAnAliasThatTheHostDidNotMake) {
  std::string record(150, '\0');
  record.replace(6, 2, std::string("\0\2", 2));
  record.replace(50, 6, "\5a.psd");
  Handle put = nullptr;
  ASSERT_EQ(PtrToHand(record.data(), &put, static_cast<long>(record.size())), noErr);
  PIActionDescriptor descriptor = descriptorOf("[]");
  EXPECT_EQ(descriptors_->PutAlias(descriptor, kItemKey, put), 0);
  handles_->DisposeRegularHandle(put);
  EXPECT_EQ(textOf(descriptor), R"([{"key":"KeyA","type":"alis","value":"a.psd"}])");
  Handle read = nullptr;
  ASSERT_EQ(descriptors_->GetAlias(descriptor, kItemKey, &read), 0);
  EXPECT_EQ(theMemoryHandles().bytes(read, "test"), record);
  handles_->DisposeRegularHandle(read);
}

TEST_F(AliasSuiteItems, KeepTheBytesOfABookmarkThatTheHostDidNotMake) {
  const std::string bytes("book\0\1\2", 7);
  const CFDataRef put =
      CFDataCreate(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(bytes.data()), 7);
  PIActionDescriptor descriptor = descriptorOf("[]");
  EXPECT_EQ(descriptors_->PutBookmark(descriptor, kItemKey, put), 0);
  CFRelease(put);
  EXPECT_EQ(textOf(descriptor), R"([{"key":"KeyA","type":"bkmk","value":""}])");
  CFDataRef read = nullptr;
  ASSERT_EQ(descriptors_->GetBookmark(descriptor, kItemKey, &read), 0);
  ASSERT_EQ(CFDataGetLength(read), 7);
  EXPECT_EQ(std::memcmp(CFDataGetBytePtr(read), bytes.data(), 7), 0);
  CFRelease(read);
}

TEST_F(AliasSuiteItems, RefuseToReadAnAliasAsABookmark) {
  PIActionDescriptor descriptor =
      descriptorOf(R"([{"key": "KeyA", "type": "alis", "value": "/tmp/x"}])");
  CFDataRef read = nullptr;
  EXPECT_EQ(descriptors_->GetBookmark(descriptor, kItemKey, &read), kWrongDataType);
}

TEST_F(AliasSuiteItems, RefuseDataThatAreNotABookmark) {
  PIActionDescriptor descriptor = descriptorOf("[]");
  const UInt8 bytes[] = {1, 2, 3};
  const CFDataRef data = CFDataCreate(kCFAllocatorDefault, bytes, sizeof bytes);
  EXPECT_EQ(descriptors_->PutBookmark(descriptor, kItemKey, data), paramErr);
  EXPECT_EQ(descriptors_->PutBookmark(descriptor, kItemKey, nullptr), paramErr);
  CFRelease(data);
}

}  // namespace
}  // namespace simulator
