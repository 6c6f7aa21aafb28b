#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "simulator/loader/DwarfFrames.h"

namespace simulator {
namespace {

constexpr std::uint64_t kAddress = 0x10000;

class Builder {
 public:
  template <class T>
  Builder& add(T value) {
    const auto* const begin = reinterpret_cast<const std::byte*>(&value);
    data_.insert(data_.end(), begin, begin + sizeof value);
    return *this;
  }
  Builder& bytes(std::initializer_list<int> values) {
    for (const int value : values) add(static_cast<std::uint8_t>(value));
    return *this;
  }
  Builder& text(const char* value) {
    for (const char* c = value; *c != 0; ++c) add(*c);
    return add('\0');
  }
  std::size_t size() const { return data_.size(); }
  std::vector<std::byte>& data() { return data_; }

 private:
  std::vector<std::byte> data_;
};

// A common entry with the augmentation that the platform uses, then one function's entry.
std::vector<std::byte> section(const char* augmentation = "zPLR", int personality = 0x9B,
                               int pointers = 0x10, int returnAddress = 16) {
  Builder out;
  out.add(std::uint32_t{24}).add(std::uint32_t{0}).bytes({1}).text(augmentation);
  out.bytes({1, 0x78, returnAddress, 7, personality})
      .add(std::int32_t{0x1000})
      .bytes({pointers, pointers});
  out.bytes({0x0C, 7, 8});
  out.add(std::uint32_t{0x24}).add(static_cast<std::uint32_t>(out.size()));
  out.add(std::uint64_t{0x200}).add(std::uint64_t{0x40});
  out.bytes({8}).add(std::uint64_t{0x300}).bytes({0x83, 2, 0, 0, 0, 0, 0});
  return out.data();
}

DwarfFrame read(const std::vector<std::byte>& data, std::uint64_t offset = 28,
                std::uint64_t returnAddress = 16) {
  return readDwarfFrame(data, offset, kAddress, returnAddress);
}

TEST(DwarfFrames, DecodePointersRelativeToTheirPlaces) {
  const std::vector<std::byte> data = section();
  const DwarfFrame frame = read(data);
  EXPECT_EQ(frame.start, kAddress + 36 + 0x200);
  EXPECT_EQ(frame.size, 0x40u);
  EXPECT_EQ(frame.lsda, kAddress + 53 + 0x300);
  EXPECT_EQ(frame.personality, kAddress + 19 + 0x1000);
  EXPECT_EQ(frame.codeAlignment, 1);
  EXPECT_EQ(frame.dataAlignment, -8);
}

TEST(DwarfFrames, HoldTheInstructionsOfBothEntries) {
  const std::vector<std::byte> data = section();
  const DwarfFrame frame = read(data);
  ASSERT_EQ(frame.commonInstructions.size(), 3u);
  EXPECT_EQ(frame.commonInstructions[0], std::byte{0x0C});
  ASSERT_EQ(frame.instructions.size(), 7u);
  EXPECT_EQ(frame.instructions[0], std::byte{0x83});
}

TEST(DwarfFrames, KeepTheReturnAddressInTheProcessorsColumn) {
  const std::vector<std::byte> arm64 = section("zPLR", 0x9B, 0x10, 30);
  EXPECT_EQ(read(arm64, 28, 30).size, 0x40u);
  EXPECT_THROW(read(arm64, 28, 16), LoadError);
  EXPECT_THROW(read(section(), 28, 30), LoadError);
}

TEST(DwarfFrames, AreRefusedInUnsupportedForms) {
  EXPECT_THROW(read(section("zPLX")), LoadError);
  EXPECT_THROW(read(section("aPLR")), LoadError);
  EXPECT_THROW(read(section("zPLR", 0x1B)), LoadError);
  EXPECT_THROW(read(section("zPLR", 0x9B, 0x50)), LoadError);
  EXPECT_THROW(read(section("zPLR", 0x9B, 0x1C)), LoadError);
}

TEST(DwarfFrames, AreRefusedIfDamaged) {
  const std::vector<std::byte> good = section();
  EXPECT_THROW(read(good, 0), LoadError);
  EXPECT_THROW(read(good, good.size()), LoadError);
  for (std::size_t size = 0; size < good.size(); ++size) {
    EXPECT_THROW(read({good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size)}), LoadError);
  }
}

}  // namespace
}  // namespace simulator
