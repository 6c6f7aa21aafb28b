#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "simulator/scenario/HostFiles.h"
#include "simulator/scenario/InputFile.h"
#include "tests/support/Process.h"

namespace {

using namespace simulator;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::ThrowsMessage;
using testing_support::readFile;
using testing_support::TemporaryFolder;

std::string preferencesOf(const HostVersion& version) {
  const auto file = preferencesFileOf(version);
  return file ? file->string() : "none";
}

TEST(HostFiles, KeepPreferencesUnderTheNameOfTheEdition) {
  const auto path = [](const std::string& edition) {
    return "Adobe Photoshop " + edition + " Settings/Adobe Photoshop " + edition + " Prefs.psp";
  };
  const std::vector<std::pair<std::pair<int, int>, const char*>> editions = {
      {{10, 0}, "CS3"},   {{10, 9}, "CS3"},   {{11, 0}, "CS4"},   {{12, 0}, "CS5"},
      {{12, 1}, "CS5.1"}, {{12, 2}, "CS5.5"}, {{12, 5}, "CS5.5"}, {{13, 0}, "CS6"}};
  for (const auto& [version, edition] : editions) {
    EXPECT_EQ(preferencesOf(version), path(edition)) << version.first << "." << version.second;
  }
}

TEST(HostFiles, KeepNoPreferencesInAVersionThatIsNotKnown) {
  EXPECT_EQ(preferencesOf(std::nullopt), "none");
  EXPECT_EQ(preferencesOf(std::pair(9, 0)), "none");
  EXPECT_EQ(preferencesOf(std::pair(14, 0)), "none");
}

TEST(HostFiles, KeepShortcutsInTheFolderOfTheVersion) {
  const std::vector<std::pair<std::pair<int, int>, const char*>> folders = {
      {{10, 0}, "CS3"},   {{10, 2}, "CS3.2"}, {{11, 0}, "CS4"}, {{12, 0}, "CS5"},
      {{12, 1}, "CS5.1"}, {{12, 2}, "CS5.5"}, {{13, 0}, "CS6"}, {{13, 1}, "CS6.1"},
      {{9, 0}, "CS9"},    {{14, 2}, "CS14.2"}};
  for (const auto& [version, name] : folders) {
    EXPECT_EQ(settingsFolderOf(version.first, version.second),
              "Adobe Photoshop " + std::string(name) + " Settings");
  }
}

TEST(HostFiles, HoldThePreferenceAfterItsNameAndType) {
  const std::string key = "zoomWithScrollWheelbool";
  for (const bool value : {false, true}) {
    const std::string bytes = preferencesFile(value);
    const std::size_t at = bytes.find(key);
    ASSERT_NE(at, std::string::npos);
    EXPECT_EQ(bytes.find(key, at + 1), std::string::npos);
    EXPECT_EQ(bytes[at + key.size()], value ? 1 : 0);
    EXPECT_EQ(bytes.substr(0, 4), "8BPF");
  }
}

TEST(HostFiles, HoldEachShortcutAtItsPlace) {
  using namespace std::string_literals;
  const ShortcutRecord all = {"abcdefgh", true, true, true, 'k', 'o'};
  const std::string name = "a\0\0\0b\0\0\0c\0\0\0d\0\0\0e\0\0\0f\0\0\0"s;
  std::string fields(64, '\0');
  fields[11] = fields[12] = fields[13] = 1;
  fields[18] = 'k';
  fields[20] = 'o';
  EXPECT_EQ(shortcutsFile({all}, 3), std::string(3, '\0') + name + fields);

  const std::string onlyName = "x\0\0\0"s + std::string(64, '\0');
  for (const auto& [field, record] :
       std::vector<std::pair<std::size_t, ShortcutRecord>>{{11, {"x", true, false, false}},
                                                           {12, {"x", false, true, false}},
                                                           {13, {"x", false, false, true}}}) {
    std::string expected = onlyName;
    expected[4 + field] = 1;
    EXPECT_EQ(shortcutsFile({record}, 0), expected);
  }
  EXPECT_EQ(shortcutsFile({{.plugIn = "x"}, {.plugIn = "x"}}, 0), onlyName + onlyName);
}

class WrittenHostFiles : public testing::Test {
 protected:
  std::filesystem::path preferences() const { return folder_.file("Preferences"); }

  /// The files below the preferences folder, sorted.
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(preferences())) {
      if (entry.is_regular_file()) names.push_back(entry.path().lexically_relative(preferences()));
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  TemporaryFolder folder_;
};

TEST_F(WrittenHostFiles, AreThePreferencesAndTheShortcutsOfTheVersion) {
  HostSetup host;
  host.version = std::pair(13, 0);
  host.zoomWithScrollWheel = true;
  writeHostFiles(host, preferences());
  const std::string settings = "Adobe Photoshop CS6 Settings/";
  EXPECT_THAT(files(), ElementsAre(settings + "Adobe Photoshop CS6 Prefs.psp",
                                   settings + "Keyboard Shortcuts.psp"));
  EXPECT_EQ(readFile(preferences() / settings / "Adobe Photoshop CS6 Prefs.psp"),
            preferencesFile(true));
  EXPECT_EQ(readFile(preferences() / settings / "Keyboard Shortcuts.psp"),
            shortcutsFile({{.plugIn = "MrvPhotoshop", .option = true, .key = 'z'}}, 100));
}

TEST_F(WrittenHostFiles, AreNoneIfTheHostHasNoVersionOrNoPreference) {
  HostSetup host;
  host.version = std::nullopt;
  writeHostFiles(host, preferences());
  EXPECT_THAT(files(), IsEmpty());
  host = {};
  host.zoomWithScrollWheel = std::nullopt;
  writeHostFiles(host, preferences());
  EXPECT_THAT(files(), IsEmpty());
}

TEST_F(WrittenHostFiles, AreAnErrorIfTheyCannotBeWritten) {
  std::filesystem::create_directories(preferences() / "Adobe Photoshop CS5.1 Settings" /
                                      "Keyboard Shortcuts.psp");
  EXPECT_THAT(
      [&] { writeHostFiles({}, preferences()); },
      ThrowsMessage<TemporaryFileError>(testing::StartsWith("cannot write the host's files in ")));
}

TEST(TemporaryHome, IsANewFolderThatGoesWithWhatItHolds) {
  const TemporaryFolder folder;
  setenv("TMPDIR", folder.file("").c_str(), 1);
  std::filesystem::path path;
  {
    const TemporaryHome home;
    const TemporaryHome other;
    path = home.path();
    EXPECT_NE(path, other.path());
    EXPECT_EQ(path.string().rfind(folder.file("") + "mrvsim-", 0), 0U) << path;
    std::filesystem::create_directories(path / "Library" / "Preferences");
    EXPECT_TRUE(std::filesystem::exists(path));
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder.file("")));
}

TEST(TemporaryHome, IsAnErrorIfItCannotBeMade) {
  const TemporaryFolder folder;
  setenv("TMPDIR", folder.file("missing").c_str(), 1);
  EXPECT_THAT(
      [] { TemporaryHome(); },
      ThrowsMessage<TemporaryFileError>(testing::AllOf(
          testing::StartsWith("cannot make a temporary folder in " + folder.file("missing")),
          testing::HasSubstr("No such file or directory"))));
}

}  // namespace
