#include <gtest/gtest.h>

#include <random>

#include "packaging/resource/BigEndian.h"
#include "packaging/resource/ResourceFork.h"
#include "platform/FourCharCode.h"

namespace {

constexpr std::uint32_t kText = fourCharCode("TEXT");
constexpr std::uint32_t kOther = fourCharCode("abcd");

std::vector<Resource> sample() {
  return {
      {kText, 128, "first", "hello"}, {kOther, -5, "", std::string("\0\1", 2)}, {kText, 7, "", ""}};
}

TEST(ResourceFork, ReadsWhatItWrote) {
  const std::vector<Resource> read = readResourceFork(writeResourceFork(sample()));
  ASSERT_EQ(read.size(), 3u);
  // Types are in ascending order, resources of the same type in the given order.
  EXPECT_EQ(read[0].type, kText);
  EXPECT_EQ(read[0].id, 128);
  EXPECT_EQ(read[0].name, "first");
  EXPECT_EQ(read[0].data, "hello");
  EXPECT_EQ(read[1].id, 7);
  EXPECT_EQ(read[2].type, kOther);
  EXPECT_EQ(read[2].id, -5);
  EXPECT_EQ(read[2].name, "");
  EXPECT_EQ(read[2].data, std::string("\0\1", 2));
}

TEST(ResourceFork, HasTheHeaderOfThePlatformsFormat) {
  const std::string bytes = writeResourceFork(sample());
  const std::uint32_t dataSize = 4 + 5 + 4 + 0 + 4 + 2;
  EXPECT_EQ(readBigEndian(bytes, 0, 4), 256u);
  EXPECT_EQ(readBigEndian(bytes, 4, 4), 256u + dataSize);
  EXPECT_EQ(readBigEndian(bytes, 8, 4), dataSize);
  EXPECT_EQ(readBigEndian(bytes, 12, 4), bytes.size() - 256 - dataSize);
  // The map starts with a copy of the header.
  EXPECT_EQ(bytes.substr(256 + dataSize, 16), bytes.substr(0, 16));
}

TEST(ResourceFork, GivesTheSameBytesForTheSameResources) {
  EXPECT_EQ(writeResourceFork(sample()), writeResourceFork(sample()));
}

TEST(ResourceFork, ReadsNoResourcesFromAnEmptyFile) {
  EXPECT_TRUE(readResourceFork(writeResourceFork({})).empty());
}

TEST(ResourceFork, RefusesANameThatIsTooLong) {
  EXPECT_THROW(writeResourceFork({{kText, 1, std::string(256, 'n'), ""}}), ResourceError);
}

TEST(ResourceFork, RefusesTwoResourcesOfOneTypeAndNumber) {
  EXPECT_THROW(writeResourceFork({{kText, 1, "", ""}, {kText, 1, "", ""}}), ResourceError);
  EXPECT_NO_THROW(writeResourceFork({{kText, 1, "", ""}, {kOther, 1, "", ""}}));
}

TEST(ResourceFork, RefusesTruncatedFiles) {
  const std::string good = writeResourceFork(sample());
  for (std::size_t size = 0; size < good.size(); ++size) {
    EXPECT_THROW(readResourceFork(good.substr(0, size)), ResourceError) << size;
  }
}

TEST(ResourceFork, ReadsOrRefusesDamagedFiles) {
  std::mt19937 random(1);
  int refused = 0;
  for (int i = 0; i < 5000; ++i) {
    std::string bytes = writeResourceFork(sample());
    for (int change = 0; change < 4; ++change)
      bytes[random() % bytes.size()] = static_cast<char>(random());
    try {
      readResourceFork(bytes);
    } catch (const ResourceError&) {
      ++refused;
    }
  }
  EXPECT_GT(refused, 100);
}

}  // namespace
