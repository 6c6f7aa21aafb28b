#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

#include "simulator/loader/ByteReader.h"

namespace simulator {
namespace {

std::vector<std::byte> bytes(std::initializer_list<int> values) {
  std::vector<std::byte> result;
  for (const int value : values) result.push_back(static_cast<std::byte>(value));
  return result;
}

std::uint64_t uleb(std::initializer_list<int> values) {
  const auto data = bytes(values);
  return ByteReader(data, "data").readUleb();
}

std::int64_t sleb(std::initializer_list<int> values) {
  const auto data = bytes(values);
  return ByteReader(data, "data").readSleb();
}

TEST(ByteReader, ReadsLittleEndianNumbers) {
  const auto data = bytes({0x78, 0x56, 0x34, 0x12, 0xFF});
  ByteReader reader(data, "data");
  EXPECT_EQ(reader.read<std::uint32_t>(), 0x12345678u);
  EXPECT_EQ(reader.read<std::int8_t>(), -1);
  EXPECT_TRUE(reader.atEnd());
}

TEST(ByteReader, NamesTheBytesThatEndTooEarly) {
  const auto data = bytes({1, 2, 3});
  ByteReader reader(data, "the sample");
  try {
    reader.read<std::uint32_t>();
    FAIL();
  } catch (const LoadError& error) {
    EXPECT_STREQ(error.what(), "the sample ends too early (at byte 0)");
  }
}

TEST(ByteReader, RefusesToReadFromAPositionPastTheEnd) {
  const auto data = bytes({1});
  EXPECT_THROW(ByteReader(data, "data", 2).read<std::uint8_t>(), LoadError);
  EXPECT_THROW(ByteReader(data, "data", SIZE_MAX).take(1), LoadError);
  EXPECT_THROW(ByteReader(data, "data", SIZE_MAX).readText(), LoadError);
}

TEST(ByteReader, ReadsUlebNumbers) {
  EXPECT_EQ(uleb({0x00}), 0u);
  EXPECT_EQ(uleb({0x7F}), 127u);
  EXPECT_EQ(uleb({0xE5, 0x8E, 0x26}), 624485u);
  EXPECT_EQ(uleb({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01}), UINT64_MAX);
}

TEST(ByteReader, RefusesUlebNumbersOfMoreThan64Bits) {
  EXPECT_THROW(uleb({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x02}), LoadError);
  EXPECT_THROW(uleb({0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x00}), LoadError);
  EXPECT_THROW(uleb({0x80}), LoadError);
}

TEST(ByteReader, ReadsSlebNumbers) {
  EXPECT_EQ(sleb({0x02}), 2);
  EXPECT_EQ(sleb({0x7E}), -2);
  EXPECT_EQ(sleb({0x80, 0x7F}), -128);
  EXPECT_EQ(sleb({0xFF, 0x00}), 127);
  EXPECT_EQ(sleb({0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x7F}), INT64_MIN);
}

TEST(ByteReader, RefusesATextWithoutAnEnd) {
  const auto data = bytes({'a', 'b'});
  EXPECT_THROW(ByteReader(data, "data").readText(), LoadError);
}

TEST(ByteReader, MovesPastTheEndOfAText) {
  const auto data = bytes({'a', 'b', 0, 7});
  ByteReader reader(data, "data");
  EXPECT_EQ(reader.readText(), "ab");
  EXPECT_EQ(reader.read<std::uint8_t>(), 7);
}

TEST(ByteReaderSlice, RefusesAPartOutsideTheBytes) {
  const auto data = bytes({1, 2, 3});
  EXPECT_EQ(slice(data, 1, 2, "part").size(), 2u);
  EXPECT_EQ(slice(data, 3, 0, "part").size(), 0u);
  EXPECT_THROW(slice(data, 4, 0, "part"), LoadError);
  EXPECT_THROW(slice(data, 1, UINT64_MAX, "part"), LoadError);
}

}  // namespace
}  // namespace simulator
