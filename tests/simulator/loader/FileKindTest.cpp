#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>

#include "simulator/loader/FileKind.h"
#include "tests/simulator/loader/Modules.h"
#include "tests/support/Process.h"

namespace simulator {
namespace {

using testing_support::TemporaryFolder;

// Bytes from a text of hexadecimal digits, followed by zeros up to the size of a header.
std::vector<std::byte> header(std::string_view digits) {
  std::vector<std::byte> bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    bytes.push_back(
        static_cast<std::byte>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16)));
  }
  bytes.resize(kTellingBytes);
  return bytes;
}

std::string kindOf(std::string_view text) {
  return describeFile(std::as_bytes(std::span(text.data(), text.size())));
}

TEST(FileKind, NamesMachOFilesByWordSizeByteOrderAndProcessor) {
  EXPECT_EQ(describeFile(header("cffaedfe07000001")), "a Mach-O file for x86_64");
  EXPECT_EQ(describeFile(header("cffaedfe0700000108000000")), "a Mach-O file for x86_64h");
  EXPECT_EQ(describeFile(header("cffaedfe0c00000100000000")), "a Mach-O file for arm64");
  EXPECT_EQ(describeFile(header("cffaedfe0c00000102000080")), "a Mach-O file for arm64e");
  EXPECT_EQ(describeFile(header("cefaedfe0700000003000000")), "a 32-bit Mach-O file for i386");
  EXPECT_EQ(describeFile(header("cefaedfe0c000002")), "a 32-bit Mach-O file for arm64_32");
  EXPECT_EQ(describeFile(header("feedface00000012")), "a 32-bit big-endian Mach-O file for ppc");
  EXPECT_EQ(describeFile(header("feedfacf01000012")), "a big-endian Mach-O file for ppc64");
  EXPECT_EQ(describeFile(header("cffaedfe63000000")), "a Mach-O file for processor 0x63");
}

TEST(FileKind, NamesTheOtherFilesThatStandInForPlugins) {
  EXPECT_EQ(kindOf("!<arch>\n#1/20"), "an archive");
  EXPECT_EQ(kindOf("PK\x03\x04"), "a zip archive");
  EXPECT_EQ(kindOf("BC\xC0\xDE"), "an LLVM bitcode file");
  EXPECT_EQ(kindOf("--- !tapi-tbd\ntbd-version: 4"), "a text-based stub library");
  EXPECT_EQ(kindOf("#!/bin/sh\n"), "a text file");
  EXPECT_EQ(kindOf(""), "an empty file");
  EXPECT_EQ(kindOf("\x7F"
                   "EL"),
            "a file of an unknown format");
  EXPECT_EQ(describeFile(header("cafebabe00000002")), "a universal file");
}

TEST(FileKind, NamesElfFilesByWordSizeTypeAndProcessor) {
  const std::string ident64 = "7f454c46020101000000000000000000";
  const std::string ident32 = "7f454c46010101000000000000000000";
  EXPECT_EQ(describeFile(header(ident64 + "03003e00")), "an ELF file for x86_64");
  EXPECT_EQ(describeFile(header(ident64 + "0200b700")), "an ELF executable for arm64");
  EXPECT_EQ(describeFile(header(ident32 + "01000300")), "a 32-bit ELF object file for i386");
  EXPECT_EQ(describeFile(header(ident64 + "0300f300")), "an ELF file for machine 243");
}

TEST(FileKind, TellsFormatsApartByTheirFirstFourBytes) {
  const auto format = [](std::string_view digits) {
    std::vector<std::byte> bytes = header(digits);
    bytes.resize(4);
    return formatOf(bytes);
  };
  for (const char* const magic : {"cffaedfe", "cefaedfe", "feedface", "feedfacf"}) {
    EXPECT_EQ(format(magic), FileFormat::kMachO) << magic;
  }
  EXPECT_EQ(format("cafebabe"), FileFormat::kUniversal);
  EXPECT_EQ(format("cafebabf"), FileFormat::kUniversal);
  EXPECT_EQ(format("7f454c46"), FileFormat::kElf);
  EXPECT_EQ(format("bebafeca"), FileFormat::kOther);
  EXPECT_EQ(formatOf({}), FileFormat::kOther);
}

TEST(FileKind, DescribesTheBeginningOfEveryHeader) {
  for (const char* const digits : {"cffaedfe07000001", "7f454c46020101", "cafebabe00000002"}) {
    std::vector<std::byte> bytes = header(digits);
    while (!bytes.empty()) {
      EXPECT_FALSE(describeFile(bytes).empty());
      bytes.pop_back();
    }
  }
}

TEST(FileKind, ReadsTheBeginningOfAFile) {
  const TemporaryFolder folder;
  testing_support::writeFile(folder.file("short"), "ab");
  EXPECT_EQ(beginningOf(folder.file("short")).size(), 2U);
  EXPECT_EQ(beginningOf(modulePath("Lifetime")).size(), kTellingBytes);
  EXPECT_EQ(describeFile(beginningOf(modulePath("Lifetime"))), "a Mach-O file for x86_64");
  EXPECT_TRUE(beginningOf(folder.file("absent")).empty());
}

}  // namespace
}  // namespace simulator
