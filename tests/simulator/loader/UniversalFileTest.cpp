#include <gtest/gtest.h>

#include <string>

#include "simulator/loader/MachFile.h"
#include "simulator/loader/UniversalFile.h"
#include "tests/simulator/loader/Modules.h"
#include "tests/simulator/loader/UniversalFiles.h"

namespace simulator {
namespace {

constexpr mach::Processor kI386{7, 3};
constexpr mach::Processor kPpc{18, 0};
constexpr mach::Processor kX86_64h{0x01000007, 8};
constexpr mach::Processor kArm64e{0x0100000C, 2};

std::vector<std::byte> filled(int value) { return std::vector<std::byte>(16, std::byte(value)); }

// The value that fills the slice; a LoadError's text if there is none.
std::string found(const std::vector<std::byte>& file, mach::Processor wanted = mach::kX86_64) try {
  const Bytes slice = sliceFor(file, wanted);
  EXPECT_EQ(slice.size(), 16U);
  return std::to_string(static_cast<int>(slice[0]));
} catch (const LoadError& error) {
  return error.what();
}

std::string found(const std::vector<SliceToBuild>& slices) { return found(universalFile(slices)); }

TEST(UniversalFile, GivesTheSliceOfTheProcessorThatIsWanted) {
  for (const TableForm form : {TableForm::k32, TableForm::k64}) {
    const auto file = universalFile(
        {{kI386, filled(1)}, {mach::kX86_64, filled(2)}, {mach::kArm64, filled(3)}}, form);
    EXPECT_EQ(found(file, mach::kX86_64), "2");
    EXPECT_EQ(found(file, mach::kArm64), "3");
    EXPECT_EQ(found(file, kI386), "1");
  }
}

TEST(UniversalFile, PrefersTheSubtypeThatIsWanted) {
  const auto file = universalFile({{kX86_64h, filled(1)}, {mach::kX86_64, filled(2)}});
  EXPECT_EQ(found(file, mach::kX86_64), "2");
  EXPECT_EQ(found(file, kX86_64h), "1");
  EXPECT_EQ(found({{kX86_64h, filled(1)}}), "1");
}

TEST(UniversalFile, IgnoresTheFlagsInASubtype) {
  EXPECT_EQ(found({{{0x01000007, INT32_MIN + 3}, filled(5)}, {kX86_64h, filled(6)}}), "5");
}

TEST(UniversalFile, NamesTheSlicesIfNoneIsForTheProcessor) {
  EXPECT_EQ(found({{kPpc, filled(1)}, {kI386, filled(2)}, {kArm64e, filled(3)}}),
            "the universal file is for ppc, i386, arm64e; a slice for x86_64 is needed");
}

TEST(UniversalFile, RefusesATableThatIsEmptyOrTooLong) {
  EXPECT_EQ(found(std::vector<SliceToBuild>{}),
            "the universal file's table has 0 rows; 1 to 44 are allowed");
  auto file = universalFile({{mach::kX86_64, filled(1)}});
  file[7] = std::byte{45};
  EXPECT_EQ(found(file), "the universal file's table has 45 rows; 1 to 44 are allowed");
}

TEST(UniversalFile, RefusesATableThatEndsTooEarly) {
  for (const TableForm form : {TableForm::k32, TableForm::k64}) {
    const auto file = universalFile({{mach::kX86_64, filled(1)}}, form);
    const std::size_t table = form == TableForm::k64 ? 40 : 28;
    for (std::size_t size = 4; size < table; ++size) {
      const std::vector<std::byte> part(file.begin(), file.begin() + static_cast<long>(size));
      EXPECT_NE(found(part).find("the universal file's table ends too early"), std::string::npos)
          << size;
    }
  }
}

TEST(UniversalFile, RefusesASliceOutsideTheFile) {
  EXPECT_EQ(found({{mach::kX86_64, filled(1)}, {mach::kArm64, filled(2), 0x8000}}),
            "the slice for arm64 lies outside the file (16 bytes at 0x8000)");
  EXPECT_EQ(found({{mach::kX86_64, filled(1), 0, 17}}),
            "the slice for x86_64 lies outside the file (17 bytes at 0x1000)");
  const auto huge = universalFile({{mach::kX86_64, filled(1), 0x1000, UINT64_MAX}}, TableForm::k64);
  EXPECT_EQ(found(huge),
            "the slice for x86_64 lies outside the file (18446744073709551615 bytes at 0x1000)");
}

TEST(UniversalFile, RefusesOverlappingSlices) {
  EXPECT_EQ(found({{kI386, filled(1)}, {mach::kX86_64, filled(2), 0x1000}}),
            "the slices for i386 and x86_64 overlap");
  EXPECT_EQ(found({{mach::kArm64, filled(1), 0x4, 16, 2}, {mach::kX86_64, filled(2)}}),
            "the slice for arm64 overlaps the table");
}

TEST(UniversalFile, RefusesUnalignedSlices) {
  EXPECT_EQ(found({{kI386, filled(1), 0x1008, 8}, {mach::kX86_64, filled(2)}}),
            "the slice for i386 is not aligned to 2^12 bytes (at 0x1008)");
  EXPECT_EQ(found({{kI386, filled(1), 0, 0, 16}, {mach::kX86_64, filled(2)}}),
            "the slice for i386 asks for an alignment of 2^16; at most 2^15 is allowed");
  EXPECT_EQ(
      found({{kI386, filled(1)}, {mach::kX86_64, filled(2), 0x1010, 8, 2}, {kPpc, filled(1)}}),
      "the slice for x86_64 does not begin at a page of 4096 bytes (at 0x1010)");
  std::vector<std::byte> arm64 = universalFile({{mach::kArm64, filled(1), 0x5000}});
  arm64.resize(0x6000);
  EXPECT_EQ(found(arm64, mach::kArm64),
            "the slice for arm64 does not begin at a page of 16384 bytes (at 0x5000)");
}

TEST(UniversalFile, RefusesTwoSlicesForOneProcessor) {
  EXPECT_EQ(found({{kPpc, filled(1)}, {kPpc, filled(2)}, {mach::kX86_64, filled(3)}}),
            "the universal file has two slices for ppc");
}

TEST(UniversalFile, ListsTheProcessorsOfItsSlices) {
  const auto file = universalFile({{kI386, filled(1)}, {mach::kX86_64, filled(2)}});
  EXPECT_EQ(processorsIn(file), (std::vector{kI386, mach::kX86_64}));
}

TEST(UniversalFile, IsReadLikeTheFileOfItsSlice) {
  const std::vector<std::byte> thin = moduleBytes("Lifetime");
  const MachFile file(universalFile({{mach::kArm64, filled(1)}, {mach::kX86_64, thin}}));
  EXPECT_EQ(file.imageSize(), MachFile(thin).imageSize());
  ASSERT_FALSE(file.segments().empty());
  const Bytes code = file.contents(file.segments().front());
  EXPECT_TRUE(std::equal(code.begin(), code.end(), thin.begin()));
}

TEST(UniversalFile, IsRefusedIfTheSliceIsForAnotherProcessorThanTheTableSays) {
  const auto file = universalFile({{mach::kArm64, moduleBytes("Lifetime")}});
  try {
    const MachFile read(file, mach::kArm64);
    FAIL();
  } catch (const LoadError& error) {
    EXPECT_STREQ(error.what(),
                 "the slice for arm64 is a Mach-O file for x86_64; a 64-bit Mach-O file for arm64 "
                 "is needed");
  }
}

}  // namespace
}  // namespace simulator
