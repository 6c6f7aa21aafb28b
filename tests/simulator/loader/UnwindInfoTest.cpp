#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <vector>

#include "simulator/loader/UnwindInfo.h"

namespace simulator {
namespace {

constexpr int kRbx = 3, kRbp = 6, kR12 = 12, kR13 = 13, kR14 = 14, kR15 = 15;

using Saved = std::vector<SavedRegister>;

Frame decodeFrame(std::uint32_t encoding) {
  return simulator::decodeFrame(encoding, mach::kX86_64);
}

Frame decodeForArm64(std::uint32_t encoding) {
  return simulator::decodeFrame(encoding, mach::kArm64);
}

// The entries of a table of 32-bit words.
std::vector<UnwindEntry> table(std::initializer_list<std::uint32_t> words) {
  const std::vector<std::uint32_t> data(words);
  return readUnwindInfo(std::as_bytes(std::span(data)));
}

TEST(UnwindInfoFrame, ListsTheRegistersOfABasePointerFrameFromTheLowestUp) {
  // rbx (1), r14 (4) and r15 (5) below the base pointer, rbx at the lowest address.
  const Frame frame = decodeFrame(0x01000000 | (3 << 16) | (5 << 6) | (4 << 3) | 1);
  EXPECT_EQ(frame.kind, FrameKind::kBasePointer);
  EXPECT_EQ(frame.savedRegisters(), (Saved{{kRbx, 40}, {kR14, 32}, {kR15, 24}}));
}

TEST(UnwindInfoFrame, SkipsGapsBetweenTheRegistersOfABasePointerFrame) {
  const Frame frame = decodeFrame(0x01000000 | (4 << 16) | (5 << 6) | (0 << 3) | 1);
  EXPECT_EQ(frame.savedRegisters(), (Saved{{kRbx, 48}, {kR15, 32}}));
}

TEST(UnwindInfoFrame, MaySaveNoRegisters) {
  EXPECT_TRUE(decodeFrame(0x01000000).savedRegisters().empty());
}

TEST(UnwindInfoFrame, RefusesUnknownRegistersAndThoseAboveTheFrame) {
  EXPECT_THROW(decodeFrame(0x01000000 | (1 << 3)).savedRegisters(), LoadError);
  EXPECT_THROW(decodeFrame(0x01000007), LoadError);
}

TEST(UnwindInfoFrame, ReadsTheSizeOfAStackFrameInWords) {
  const Frame frame = decodeFrame(0x02040000);
  EXPECT_EQ(frame.kind, FrameKind::kStackImmediate);
  EXPECT_EQ(frame.stackSize, 32u);
  EXPECT_TRUE(frame.savedRegisters().empty());
}

TEST(UnwindInfoFrame, DecodesPermutationsOfRegisters) {
  const auto registers = [](std::uint32_t count, std::uint32_t permutation) {
    return decodeFrame(0x02080000 | (count << 10) | permutation).registers;
  };
  EXPECT_EQ(registers(1, 0), (std::vector{kRbx}));
  EXPECT_EQ(registers(1, 5), (std::vector{kRbp}));
  EXPECT_EQ(registers(2, 0), (std::vector{kRbx, kR12}));
  EXPECT_EQ(registers(2, 2 * 5 + 1), (std::vector{kR13, kR12}));
  EXPECT_EQ(registers(6, 0), (std::vector{kRbx, kR12, kR13, kR14, kR15, kRbp}));
  EXPECT_EQ(registers(6, 5 * 120 + 4 * 24 + 3 * 6 + 2 * 2 + 1),
            (std::vector{kRbp, kR15, kR14, kR13, kR12, kRbx}));
}

TEST(UnwindInfoFrame, PlacesRegistersBelowTheReturnAddressWithoutABasePointer) {
  EXPECT_EQ(decodeFrame(0x02040000 | (2 << 10)).savedRegisters(), (Saved{{kRbx, 24}, {kR12, 16}}));
}

TEST(UnwindInfoFrame, RefusesInvalidPermutations) {
  EXPECT_THROW(decodeFrame(0x02000000 | (7 << 10)), LoadError);
  EXPECT_THROW(decodeFrame(0x02000000 | (1 << 10) | 6), LoadError);
  EXPECT_THROW(decodeFrame(0x02000000 | (6 << 10) | 720), LoadError);
}

TEST(UnwindInfoFrame, LocatesAnIndirectSizeInTheCode) {
  const Frame frame = decodeFrame(0x03000000 | (3 << 16) | (2 << 13));
  EXPECT_EQ(frame.kind, FrameKind::kStackIndirect);
  EXPECT_EQ(frame.sizeOffset, 3u);
  EXPECT_EQ(frame.stackAdjust, 16u);
}

TEST(UnwindInfoFrame, LocatesTheEntryOfADwarfFrame) {
  const Frame frame = decodeFrame(0x04001234);
  EXPECT_EQ(frame.kind, FrameKind::kDwarf);
  EXPECT_EQ(frame.dwarfOffset, 0x1234u);
}

TEST(UnwindInfoFrame, RefusesUnknownModes) {
  EXPECT_THROW(decodeFrame(0x05000000), LoadError);
  EXPECT_THROW(decodeFrame(0), LoadError);
}

constexpr int kX19 = 19, kX20 = 20, kX27 = 27, kX28 = 28, kD8 = 72, kD9 = 73, kD15 = 79;

TEST(UnwindInfoFrameOnArm64, SavesPairsDownwardFromTheBasePointer) {
  const Frame frame = decodeForArm64(0x04000101);
  EXPECT_EQ(frame.kind, FrameKind::kBasePointer);
  EXPECT_EQ(frame.savedRegisters(), (Saved{{kD9, 48}, {kD8, 40}, {kX20, 32}, {kX19, 24}}));
}

TEST(UnwindInfoFrameOnArm64, SavesPairsUpToTheLastVectorRegister) {
  const Saved saved = decodeForArm64(0x04000F1F).savedRegisters();
  ASSERT_EQ(saved.size(), 18u);
  EXPECT_EQ(saved.front(), (SavedRegister{kD15, 160}));
  EXPECT_EQ(saved[8], (SavedRegister{kX28, 96}));
  EXPECT_EQ(saved[9], (SavedRegister{kX27, 88}));
  EXPECT_EQ(saved.back(), (SavedRegister{kX19, 24}));
}

TEST(UnwindInfoFrameOnArm64, MaySaveNoRegisters) {
  EXPECT_TRUE(decodeForArm64(0x04000000).savedRegisters().empty());
}

TEST(UnwindInfoFrameOnArm64, HasAStackInUnitsOf16BytesWithoutABasePointer) {
  const Frame frame = decodeForArm64(0x02003001);
  EXPECT_EQ(frame.kind, FrameKind::kStackImmediate);
  EXPECT_EQ(frame.stackSize, 48u);
  EXPECT_EQ(frame.savedRegisters(), (Saved{{kX20, 16}, {kX19, 8}}));
}

TEST(UnwindInfoFrameOnArm64, LocatesTheEntryOfADwarfFrame) {
  const Frame frame = decodeForArm64(0x03001234);
  EXPECT_EQ(frame.kind, FrameKind::kDwarf);
  EXPECT_EQ(frame.dwarfOffset, 0x1234u);
}

TEST(UnwindInfoFrameOnArm64, RefusesUnknownRegistersAndThoseOutsideTheFrame) {
  EXPECT_THROW(decodeForArm64(0x04000020), LoadError);
  EXPECT_THROW(decodeForArm64(0x02001080), LoadError);
  EXPECT_THROW(decodeForArm64(0x02001003), LoadError);
}

TEST(UnwindInfoFrameOnArm64, RefusesUnknownModes) {
  EXPECT_THROW(decodeForArm64(0x01000000), LoadError);
  EXPECT_THROW(decodeForArm64(0), LoadError);
}

TEST(UnwindInfo, ReadsARegularPage) {
  const auto entries = table({1, 0, 0, 0, 0, 28, 2,         //
                              0x100, 52, 52, 0x200, 0, 52,  // index
                              2, 8 | (2u << 16),            // page: two entries after its head
                              0x100, 0x01000000, 0x140, 0x02010000});
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[0].start, 0x100u);
  EXPECT_EQ(entries[0].end, 0x140u);
  EXPECT_EQ(entries[0].encoding, 0x01000000u);
  EXPECT_EQ(entries[1].end, 0x200u);
}

TEST(UnwindInfo, ReadsACompressedPageWithCommonAndOwnEncodings) {
  const auto entries = table({1,
                              28,
                              1,
                              0,
                              0,
                              32,
                              2,           //
                              0x01000000,  // common encoding 0
                              0x100,
                              56,
                              56,
                              0x200,
                              0,
                              56,  // index
                              3,
                              12 | (2u << 16),
                              20 | (1u << 16),
                              0x000,
                              0x01000080,
                              0x02010000});
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[0].encoding, 0x01000000u);
  EXPECT_EQ(entries[1].start, 0x180u);
  EXPECT_EQ(entries[1].encoding, 0x02010000u);
}

TEST(UnwindInfo, FindsPersonalityAndLanguageSpecificData) {
  const auto entries = table({1,      0,
                              0,      28,
                              1,      32,
                              2,       //
                              0x3000,  // personality 1
                              0x100,  64,
                              56,     0x200,
                              0,      64,     // index
                              0x100,  0x500,  // language data
                              2,      8 | (1u << 16),
                              0x100,  0x51000000});
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].personality, 0x3000u);
  EXPECT_EQ(entries[0].lsda, 0x500u);
}

TEST(UnwindInfo, LeavesOutFunctionsWithoutAnEncoding) {
  const auto entries = table({1, 0, 0, 0, 0, 28, 2, 0x100, 52, 52, 0x200, 0, 52,  //
                              2, 8 | (2u << 16), 0x100, 0, 0x140, 0x01000000});
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].start, 0x140u);
}

TEST(UnwindInfo, RefusesDamagedTables) {
  EXPECT_THROW(table({2, 0, 0, 0, 0, 28, 0}), LoadError);
  EXPECT_THROW(table({1, 0}), LoadError);
  EXPECT_THROW(table({1, 0, 0, 0, 0, 28, 0xFFFFFFFF}), LoadError);
  EXPECT_THROW(table({1, 0, 0, 0, 0, 28, 2, 0x100, 52, 52, 0x200, 0, 52, 9, 0}), LoadError);
  // Entries out of order, a missing personality, missing language-specific data.
  EXPECT_THROW(table({1, 0, 0, 0, 0, 28, 2, 0x100, 52, 52, 0x200, 0, 52,  //
                      2, 8 | (2u << 16), 0x140, 0x01000000, 0x100, 0x01000000}),
               LoadError);
  EXPECT_THROW(table({1, 0, 0, 0, 0, 28, 2, 0x100, 52, 52, 0x200, 0, 52,  //
                      2, 8 | (1u << 16), 0x100, 0x11000000}),
               LoadError);
  EXPECT_THROW(table({1, 0, 0, 0, 0, 28, 2, 0x100, 52, 52, 0x200, 0, 52,  //
                      2, 8 | (1u << 16), 0x100, 0x41000000}),
               LoadError);
}

TEST(UnwindInfo, HasNoEntriesIfTheTableIsEmpty) {
  EXPECT_TRUE(table({1, 0, 0, 0, 0, 28, 0}).empty());
}

}  // namespace
}  // namespace simulator
