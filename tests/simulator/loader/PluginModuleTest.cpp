#include <gtest/gtest.h>

#include <string>

#include "simulator/loader/PluginModule.h"
#include "tests/simulator/loader/Modules.h"
#include "tests/simulator/loader/UniversalFiles.h"
#include "tests/support/Process.h"

namespace simulator {
namespace {

using testing_support::TemporaryFolder;
using testing_support::writeFile;

// What loading a file with these contents is refused with, without the file's name.
std::string refusal(const std::string& contents) {
  const TemporaryFolder folder;
  const std::string file = folder.file("plugin");
  writeFile(file, contents);
  try {
    loadPlugin(file);
  } catch (const std::runtime_error& error) {
    const std::string text = error.what();
    EXPECT_EQ(text.substr(0, file.size()), file);
    return text.substr(file.size());
  }
  return "";
}

std::string textOf(const std::vector<std::byte>& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// A Mach-O header that has no load commands.
std::string machHeader(std::uint32_t magic, std::int32_t cpuType, std::uint32_t fileType = 8) {
  const mach::Header header{magic, cpuType, 3, fileType, 0, 0, 0, 0};
  return {reinterpret_cast<const char*>(&header), sizeof header};
}

TEST(PluginModule, NamesFilesOfOtherFormats) {
  const std::string needed =
      "; a Mac bundle's folder, a Mach-O file or a Linux module (an ELF file for x86_64) is needed";
  EXPECT_EQ(refusal("#!/bin/sh"), " is a text file" + needed);
  EXPECT_EQ(refusal("!<arch>\n"), " is an archive" + needed);
  EXPECT_EQ(refusal(""), " is an empty file" + needed);
  EXPECT_EQ(refusal("\x01\x02"), " is a file of an unknown format" + needed);
  const std::string elf(
      "\x7F"
      "ELF\x01\x01\x01\0\0\0\0\0\0\0\0\0\x03\0\x03\0",
      20);
  EXPECT_EQ(refusal(elf + std::string(44, '\0')), " is a 32-bit ELF file for i386" + needed);
}

TEST(PluginModule, NamesMachOFilesForOtherProcessors) {
  const std::string needed = "; a 64-bit Mach-O file for x86_64 is needed";
  EXPECT_EQ(refusal(machHeader(mach::kMagic64, 0x0100000C)),
            ": the file is a Mach-O file for arm64" + needed);
  EXPECT_EQ(refusal(machHeader(0xFEEDFACE, 7)),
            ": the file is a 32-bit Mach-O file for i386" + needed);
  EXPECT_EQ(refusal(machHeader(0xCEFAEDFE, 0x12000000)),
            ": the file is a 32-bit big-endian Mach-O file for ppc" + needed);
  EXPECT_EQ(refusal(machHeader(0xCFFAEDFE, 0x12000001)),
            ": the file is a big-endian Mach-O file for ppc64" + needed);
}

TEST(PluginModule, NamesMachOFilesOfOtherTypes) {
  const auto ofType = [](std::uint32_t type) {
    return refusal(machHeader(mach::kMagic64, mach::kX86_64.type, type));
  };
  const std::string needed = "; a bundle or a dynamic library is needed";
  EXPECT_EQ(ofType(1), ": the file is an object file" + needed);
  EXPECT_EQ(ofType(2), ": the file is an executable" + needed);
  EXPECT_EQ(ofType(11), ": the file is a kernel extension" + needed);
  EXPECT_EQ(ofType(0), ": the file is a file of type 0" + needed);
  EXPECT_EQ(ofType(99), ": the file is a file of type 99" + needed);
}

TEST(PluginModule, NamesUniversalFilesForOtherProcessors) {
  EXPECT_EQ(refusal(textOf(universalFile({{mach::kArm64, std::vector<std::byte>(64)}}))),
            ": the universal file is for arm64; a slice for x86_64 is needed");
}

TEST(PluginModule, NamesAMissingFile) {
  try {
    loadPlugin("/nowhere/at/all");
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "/nowhere/at/all is not there");
  }
}

}  // namespace
}  // namespace simulator
