#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>

#include "simulator/loader/DyldOpcodes.h"

namespace simulator {
namespace {

constexpr std::size_t kLimit = 100;

// A stream of opcode bytes and texts.
class Stream {
 public:
  Stream& operator()(std::initializer_list<int> bytes) {
    for (const int byte : bytes) data_.push_back(static_cast<char>(byte));
    return *this;
  }
  Stream& operator()(std::string_view text) {
    data_.append(text).push_back('\0');
    return *this;
  }
  Bytes bytes() const { return std::as_bytes(std::span(data_)); }

 private:
  std::string data_;
};

std::string places(const std::vector<FixupPlace>& places) {
  std::string text;
  for (const FixupPlace& place : places) {
    text += std::to_string(place.segment) + ":" + std::to_string(place.offset) + " ";
  }
  return text;
}

std::string rebases(const Stream& stream, std::size_t limit = kLimit) {
  return places(readRebases(stream.bytes(), limit));
}

std::vector<Bind> binds(const Stream& stream, BindKind kind = BindKind::kRegular) {
  return readBinds(stream.bytes(), kind, kLimit);
}

TEST(DyldOpcodesRebases, FollowEveryPublishedOpcode) {
  EXPECT_EQ(rebases(Stream()({0x11, 0x22, 0x10, 0x52})), "2:16 2:24 ");
  EXPECT_EQ(rebases(Stream()({0x11, 0x21, 0x08, 0x30, 0x10, 0x51})), "1:24 ");
  EXPECT_EQ(rebases(Stream()({0x11, 0x21, 0x00, 0x43, 0x51})), "1:24 ");
  EXPECT_EQ(rebases(Stream()({0x11, 0x21, 0x00, 0x60, 0x03})), "1:0 1:8 1:16 ");
  EXPECT_EQ(rebases(Stream()({0x11, 0x21, 0x00, 0x70, 0x08, 0x51})), "1:0 1:16 ");
  EXPECT_EQ(rebases(Stream()({0x11, 0x21, 0x00, 0x80, 0x02, 0x10})), "1:0 1:24 ");
}

TEST(DyldOpcodesRebases, StopAtTheEndOpcode) {
  EXPECT_EQ(rebases(Stream()({0x11, 0x21, 0x00, 0x51, 0x00, 0x51})), "1:0 ");
}

TEST(DyldOpcodesRebases, AreRefusedIfUnknownOrWithoutASegment) {
  EXPECT_THROW(rebases(Stream()({0x12})), LoadError);
  EXPECT_THROW(rebases(Stream()({0x90})), LoadError);
  EXPECT_THROW(rebases(Stream()({0x51})), LoadError);
}

TEST(DyldOpcodesRebases, AreRefusedBeyondTheLimit) {
  EXPECT_THROW(rebases(Stream()({0x11, 0x21, 0x00, 0x60, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F})),
               LoadError);
  EXPECT_THROW(rebases(Stream()({0x11, 0x21, 0x00, 0x53}), 2), LoadError);
  EXPECT_EQ(rebases(Stream()({0x11, 0x21, 0x00, 0x52}), 2), "1:0 1:8 ");
}

TEST(DyldOpcodesBinds, KeepSymbolLibraryAndAddend) {
  const auto all = binds(
      Stream()({0x12, 0x40})("_one")({0x51, 0x60, 0x10, 0x71, 0x20, 0x90, 0x41})("_two")({0x90}));
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(all[0].symbol, "_one");
  EXPECT_EQ(all[0].ordinal, 2);
  EXPECT_EQ(all[0].addend, 16);
  EXPECT_EQ(all[0].place.offset, 32u);
  EXPECT_FALSE(all[0].weakImport);
  EXPECT_EQ(all[1].symbol, "_two");
  EXPECT_EQ(all[1].place.offset, 40u);
  EXPECT_TRUE(all[1].weakImport);
}

TEST(DyldOpcodesBinds, TakeSpecialOrdinals) {
  const auto all = binds(Stream()({0x3E, 0x40})("_flat")({0x51, 0x71, 0x00, 0x90, 0x30, 0x90}));
  EXPECT_EQ(all.at(0).ordinal, kOrdinalFlatLookup);
  EXPECT_EQ(all.at(1).ordinal, kOrdinalSelf);
}

TEST(DyldOpcodesBinds, FollowEveryPublishedOpcode) {
  const auto all = binds(Stream()({0x11, 0x40})("_a")(
      {0x51, 0x71, 0x00, 0xA0, 0x08, 0xB2, 0xC0, 0x02, 0x08, 0x80, 0x10, 0x90}));
  std::vector<std::uint64_t> offsets;
  for (const Bind& bind : all) offsets.push_back(bind.place.offset);
  EXPECT_EQ(offsets, (std::vector<std::uint64_t>{0, 16, 40, 56, 88}));
}

TEST(DyldOpcodesBinds, StepBackByWrappingOffsets) {
  const auto all = binds(Stream()({0x11, 0x40})("_a")(
      {0x51, 0x71, 0x20, 0x80, 0xF0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01, 0x90}));
  EXPECT_EQ(all.at(0).place.offset, 0x10u);
}

TEST(DyldOpcodesBinds, ContinueAfterEachSymbolOfALazyStream) {
  const Stream stream = Stream()({0x72, 0x00, 0x11, 0x40})("_a")(
      {0x90, 0x00, 0x72, 0x08, 0x12, 0x40})("_b")({0x90, 0x00});
  EXPECT_EQ(binds(stream, BindKind::kLazy).size(), 2u);
  EXPECT_EQ(binds(stream, BindKind::kRegular).size(), 1u);
}

TEST(DyldOpcodesBinds, IncludeStrongDefinitionsOfAWeakStream) {
  const auto all = binds(Stream()({0x48})("_mine")({0x40})("_shared")({0x51, 0x71, 0x00, 0x90}),
                         BindKind::kWeak);
  ASSERT_EQ(all.size(), 2u);
  EXPECT_TRUE(all[0].strongDefinition);
  EXPECT_FALSE(all[1].strongDefinition);
  EXPECT_EQ(all[1].ordinal, kOrdinalWeakLookup);
}

TEST(DyldOpcodesBinds, AreRefusedIfUnknownIncompleteOrOutOfRange) {
  EXPECT_THROW(binds(Stream()({0xD0})), LoadError);
  EXPECT_THROW(binds(Stream()({0x52})), LoadError);
  EXPECT_THROW(binds(Stream()({0x11, 0x71, 0x00, 0x90})), LoadError);
  EXPECT_THROW(binds(Stream()({0x11, 0x40})("_a")({0x90})), LoadError);
  EXPECT_THROW(binds(Stream()({0x20, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F})), LoadError);
}

}  // namespace
}  // namespace simulator
