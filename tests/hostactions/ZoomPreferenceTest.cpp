#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>

#include "navigate/Navigate2D.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;
namespace fs = std::filesystem;

constexpr char kPath[] = "Adobe Photoshop CS5.1 Settings/Adobe Photoshop CS5.1 Prefs.psp";
const std::string kPreferenceKey = "zoomWithScrollWheel";
constexpr std::size_t kChunk = 200;
constexpr std::size_t kValue = 23;

class ZoomPreference : public testing::Test {
 protected:
  static void write(const fs::path& file, const std::string& bytes) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
  }

  /// Reads the preference and stores what is printed in `printed`.
  bool read() {
    testing::internal::CaptureStdout();
    const bool value = Navigate2D::getZoomWithScrollWheel();
    std::fflush(stdout);
    printed = testing::internal::GetCapturedStdout();
    return value;
  }

  bool readBytes(const std::string& bytes) {
    write(machine.preferences() / kPath, bytes);
    const bool value = read();
    EXPECT_EQ(printed, "");
    return value;
  }

  /// A file of `size` bytes 'x' with the key at `position`.
  static std::string fileWithKeyAt(std::size_t position, std::size_t size) {
    std::string bytes(size, 'x');
    return bytes.replace(position, kPreferenceKey.size(), kPreferenceKey);
  }

  /// Moves the user's home to its subfolder `folder` and returns the new preferences folder.
  fs::path moveHome(const std::string& folder) {
    const fs::path home = machine.preferences().parent_path().parent_path() / folder;
    fs::create_directories(preferencesFolder(home));
    setHomeFolder(home);
    return preferencesFolder(home);
  }

  Machine machine;
  std::string printed;
};

TEST_F(ZoomPreference, IsReadTwentyThreeBytesAfterTheKeysStart) {
  for (const unsigned key : {0U, 1U, 57U, 176U}) {
    std::string bytes = fileWithKeyAt(key, 400);
    for (const int value : {0, 1, 0x80, 0xFF}) {
      bytes[key + kValue] = static_cast<char>(value);
      EXPECT_EQ(readBytes(bytes), value != 0) << key << ' ' << value;
    }
  }
}

TEST_F(ZoomPreference, DependsOnNoOtherByte) {
  std::string bytes = fileWithKeyAt(30, 200);
  bytes[30 + kValue] = 0;
  EXPECT_FALSE(readBytes(bytes));
  bytes = std::string(200, '\0').replace(30, kPreferenceKey.size(), kPreferenceKey);
  bytes[30 + kValue] = 1;
  EXPECT_TRUE(readBytes(bytes));
}

TEST_F(ZoomPreference, IsFoundInLaterChunks) {
  for (const unsigned key : {200U, 376U, 1000U}) {
    std::string bytes = fileWithKeyAt(key, 1300);
    EXPECT_TRUE(readBytes(bytes));
    bytes[key + kValue] = 0;
    EXPECT_FALSE(readBytes(bytes));
  }
}

TEST_F(ZoomPreference, IsReadAtTheFirstKey) {
  std::string bytes = fileWithKeyAt(20, 600).replace(300, kPreferenceKey.size(), kPreferenceKey);
  bytes[20 + kValue] = 0;
  EXPECT_FALSE(readBytes(bytes));
}

TEST_F(ZoomPreference, IsNotReadAtAKeyThatDiffersInOneByte) {
  for (std::size_t at = 0; at < kPreferenceKey.size(); ++at) {
    std::string bytes = fileWithKeyAt(40, 200);
    bytes[40 + at] ^= 0x20;
    EXPECT_FALSE(readBytes(bytes)) << at;
  }
}

/// The chunk contains the whole key but not the value.
TEST_F(ZoomPreference, IsReadFromTheFilesNextByteIfTheValueLiesAfterTheChunk) {
  for (std::size_t key = 177; key <= 181; ++key) {
    std::string bytes = fileWithKeyAt(key, 400);
    bytes[kChunk] = 0;
    bytes[key + kValue] = key + kValue == kChunk ? 0 : 1;
    EXPECT_FALSE(readBytes(bytes)) << key;
    bytes[key + kValue] = 0;
    bytes[kChunk] = 1;
    EXPECT_TRUE(readBytes(bytes)) << key;
  }
}

TEST_F(ZoomPreference, IsOffIfTheValueLiesAfterTheEndOfTheFile) {
  EXPECT_FALSE(readBytes(fileWithKeyAt(181, 200)));
  EXPECT_FALSE(readBytes(fileWithKeyAt(81, 100)));
  EXPECT_FALSE(readBytes(fileWithKeyAt(80, 103)));
  EXPECT_TRUE(readBytes(fileWithKeyAt(80, 104)));
}

TEST_F(ZoomPreference, IsNotFoundIfTheKeyIsSplitBetweenTwoChunks) {
  for (std::size_t key = 182; key < 200; ++key) {
    EXPECT_FALSE(readBytes(fileWithKeyAt(key, 600))) << key;
  }
}

/// A short last chunk is searched past its end, into the bytes of the previous chunk.
TEST_F(ZoomPreference, IsReadFromTheFilesNextByteIfTheChunkEndsTenBytesAfterTheKeysStart) {
  constexpr std::size_t kStart = 50;
  std::string before(kChunk, 'x');
  before.replace(kStart + 10, 9, kPreferenceKey.substr(10));
  before[kStart + kValue] = 1;  // the byte at +23 in the buffer, which is not read
  EXPECT_FALSE(readBytes(before + std::string(kStart, 'x') + kPreferenceKey.substr(0, 10)));
}

TEST_F(ZoomPreference, IsCompletedFromThePreviousChunkIfTheLastChunkIsShort) {
  // In a chunk shorter than 23 bytes the value, too, comes from the previous chunk.
  for (std::size_t size = 1; size < 23; ++size) {
    std::string before = std::string(kChunk, '\0');
    before.replace(0, kPreferenceKey.size(), kPreferenceKey);
    before[0] = 'Z';
    before[kValue] = 1;
    EXPECT_TRUE(readBytes(before + kPreferenceKey.substr(0, size) +
                          std::string(size > 19 ? size - 19 : 0, 'x')));
    before[kValue] = 0;
    EXPECT_FALSE(readBytes(before + kPreferenceKey.substr(0, size)));
  }
}

TEST_F(ZoomPreference, IsCompletedByZerosIfTheFirstChunkIsShort) {
  EXPECT_FALSE(readBytes(kPreferenceKey));
  EXPECT_FALSE(readBytes(kPreferenceKey + "bool"));  // 23 bytes: the file has no next byte
  EXPECT_FALSE(readBytes(kPreferenceKey + "boo"));   // 22 bytes: the value is the zero after them
  EXPECT_TRUE(readBytes(kPreferenceKey + "bool" + "\1"));
  EXPECT_FALSE(readBytes(kPreferenceKey.substr(0, 18)));
}

TEST_F(ZoomPreference, IsOffForAnEmptyFile) { EXPECT_FALSE(readBytes("")); }

TEST_F(ZoomPreference, IsOffForAFileWithoutTheKey) {
  EXPECT_FALSE(readBytes(std::string(200, 'x')));
  EXPECT_FALSE(readBytes(std::string(1001, 'x')));
}

TEST_F(ZoomPreference, PrintsTheFullPathOfAFileThatCannotBeOpened) {
  EXPECT_FALSE(read());
  EXPECT_EQ(printed, "getZoomWithScrollWheel open error path=" +
                         (machine.preferences() / kPath).string() + "\n");
}

TEST_F(ZoomPreference, CreatesAMissingPreferencesFolder) {
  fs::remove_all(machine.preferences());
  EXPECT_FALSE(read());
  EXPECT_TRUE(fs::is_directory(machine.preferences()));
}

TEST_F(ZoomPreference, AcceptsAFolderPathOfTwoHundredFiftyFiveBytes) {
  const std::size_t base = machine.preferences().string().size() + 1;
  const fs::path folder = moveHome(std::string(255 - base, 'h'));
  ASSERT_EQ(folder.string().size(), 255U);
  write(folder / kPath, preferencesFile(true));
  EXPECT_TRUE(read());
}

TEST_F(ZoomPreference, TakesAFolderPathLongerThanTheBufferAsEmpty) {
  const std::size_t base = machine.preferences().string().size() + 1;
  const fs::path folder = moveHome(std::string(256 - base, 'h'));
  ASSERT_EQ(folder.string().size(), 256U);
  write(folder / kPath, preferencesFile(true));
  EXPECT_FALSE(read());
  EXPECT_EQ(printed, std::string("getZoomWithScrollWheel open error path=/") + kPath + "\n");
}

TEST_F(ZoomPreference, UsesAPathInMacRoman) {
  moveHome("Zo\xC3\xAB");
  EXPECT_FALSE(read());
  EXPECT_NE(printed.find("/Zo\x91/Library/Preferences/"), std::string::npos) << printed;
}

TEST_F(ZoomPreference, SearchesTheRootWithoutAPreferencesFolder) {
  setHomeFolder("/dev/null");
  EXPECT_FALSE(read());
  EXPECT_EQ(printed, std::string("getZoomWithScrollWheel open error path=/") + kPath + "\n");
}

TEST_F(ZoomPreference, ThrowsIfASuiteCannotBeAcquired) {
  theFaults().add({"Basic.AcquireSuite", -5, 0, 1});
  EXPECT_THROW(Navigate2D::getZoomWithScrollWheel(), std::uint32_t);
  EXPECT_EQ(theCFObjects().live(), 0U);
}

struct VersionRow {
  HostVersion version;
  const char* path;
};

std::string versionName(const HostVersion& version) {
  if (!version) return "None";
  std::string name = "V" + std::to_string(version->first) + "_" + std::to_string(version->second);
  std::replace(name.begin(), name.end(), '-', 'm');
  return name;
}

std::ostream& operator<<(std::ostream& out, const VersionRow& row) {
  return out << versionName(row.version) << ": " << row.path;
}

constexpr char kColonPath[] = "Adobe Photoshop CS2 Settings:Adobe Photoshop CS2 Prefs.psp";

/// The version is cached for the process, so each version is a test.
class ZoomPreferenceOfVersion : public ZoomPreference,
                                public testing::WithParamInterface<VersionRow> {};

TEST_P(ZoomPreferenceOfVersion, IsReadFromTheFileOfTheVersion) {
  theHost().setVersion(GetParam().version);
  write(machine.preferences() / GetParam().path, preferencesFile(true));
  EXPECT_TRUE(read());
  write(machine.preferences() / GetParam().path, preferencesFile(false));
  EXPECT_FALSE(read());
  EXPECT_EQ(printed, "");
}

INSTANTIATE_TEST_SUITE_P(
    Versions, ZoomPreferenceOfVersion,
    testing::Values(
        VersionRow{{{10, 0}}, "Adobe Photoshop CS3 Settings/Adobe Photoshop CS3 Prefs.psp"},
        VersionRow{{{10, 9}}, "Adobe Photoshop CS3 Settings/Adobe Photoshop CS3 Prefs.psp"},
        VersionRow{{{11, 0}}, "Adobe Photoshop CS4 Settings/Adobe Photoshop CS4 Prefs.psp"},
        VersionRow{{{11, 5}}, "Adobe Photoshop CS4 Settings/Adobe Photoshop CS4 Prefs.psp"},
        VersionRow{{{12, -1}}, "Adobe Photoshop CS5 Settings/Adobe Photoshop CS5 Prefs.psp"},
        VersionRow{{{12, 0}}, "Adobe Photoshop CS5 Settings/Adobe Photoshop CS5 Prefs.psp"},
        VersionRow{{{12, 1}}, "Adobe Photoshop CS5.1 Settings/Adobe Photoshop CS5.1 Prefs.psp"},
        VersionRow{{{12, 2}}, "Adobe Photoshop CS5.5 Settings/Adobe Photoshop CS5.5 Prefs.psp"},
        VersionRow{{{12, 9}}, "Adobe Photoshop CS5.5 Settings/Adobe Photoshop CS5.5 Prefs.psp"},
        VersionRow{{{13, 0}}, "Adobe Photoshop CS6 Settings/Adobe Photoshop CS6 Prefs.psp"},
        VersionRow{{{13, 1}}, "Adobe Photoshop CS6 Settings/Adobe Photoshop CS6 Prefs.psp"}),
    [](const auto& row) { return versionName(row.param.version); });

class ZoomPreferenceOfOtherVersion : public ZoomPreference,
                                     public testing::WithParamInterface<HostVersion> {};

/// The preferences of every version exist and are on, but none of them is read.
TEST_P(ZoomPreferenceOfOtherVersion, IsOffBecauseTheColonPathCannotBeOpened) {
  for (const char* edition : {"CS2", "CS3", "CS4", "CS5", "CS5.1", "CS5.5", "CS6"}) {
    const std::string name = std::string("Adobe Photoshop ") + edition;
    write(machine.preferences() / (name + " Settings") / (name + " Prefs.psp"),
          preferencesFile(true));
  }
  theHost().setVersion(GetParam());
  EXPECT_FALSE(read());
  EXPECT_EQ(printed, "getZoomWithScrollWheel open error path=" +
                         (machine.preferences() / kColonPath).string() + "\n");
}

INSTANTIATE_TEST_SUITE_P(Versions, ZoomPreferenceOfOtherVersion,
                         testing::Values(HostVersion{}, HostVersion{{0, 0}}, HostVersion{{0, 5}},
                                         HostVersion{{9, 0}}, HostVersion{{14, 0}},
                                         HostVersion{{-12, 1}}),
                         [](const auto& version) { return versionName(version.param); });

}  // namespace
