// The folder and the names of the keyboard-shortcuts file.
#include <gtest/gtest.h>

#include <fstream>
#include <optional>
#include <ostream>

#include "hostactions/ShortcutFile.h"
#include "tests/support/Machine.h"

using namespace simulator;
using namespace testing_support;

namespace {

constexpr const char* kNames[] = {"Keyboard Shortcuts.psp", "Raccourcis clavier.psp",
                                  "MÈtodos abrev de teclado.psp", "Tastaturbefehle.psp"};

void writeFile(const std::filesystem::path& folder, const char* name, const std::string& bytes) {
  std::filesystem::create_directories(folder);
  std::ofstream(folder / name, std::ios::binary) << bytes;
}

std::string fileWithKey(char key) {
  return shortcutsFile({{.plugIn = "MrvPhotoshop", .key = key}}, 30);
}

struct Folder {
  HostVersion version;
  const char* name;
};

void PrintTo(const Folder& folder, std::ostream* out) { *out << folder.name; }

// The version is cached for the process, so each row is a test.
class ShortcutFilePathOfVersion : public testing::TestWithParam<Folder> {};

class ShortcutFilePath : public testing::Test {
 protected:
  std::filesystem::path folder() const {
    return machine_.preferences() / "Adobe Photoshop CS5.1 Settings";
  }

  char readKey() {
    Shortcut shortcut;
    return readPluginShortcut(shortcut) ? shortcut.key : '\0';
  }

  Machine machine_;
};

}  // namespace

TEST_P(ShortcutFilePathOfVersion, LeadsToTheFolderOfTheVersion) {
  const Machine machine;
  theHost().setVersion(GetParam().version);
  Shortcut shortcut;
  // A folder with another name is ignored.
  writeFile(machine.preferences() / "Adobe Photoshop CS Settings", kNames[0], fileWithKey('-'));
  EXPECT_FALSE(readPluginShortcut(shortcut));
  writeFile(machine.preferences() / GetParam().name, kNames[0], fileWithKey('+'));
  EXPECT_TRUE(readPluginShortcut(shortcut));
  EXPECT_EQ(shortcut.key, '+');
}

INSTANTIATE_TEST_SUITE_P(Versions, ShortcutFilePathOfVersion,
                         testing::Values(Folder{{{10, 0}}, "Adobe Photoshop CS3 Settings"},
                                         Folder{{{10, 1}}, "Adobe Photoshop CS3.1 Settings"},
                                         Folder{{{11, 0}}, "Adobe Photoshop CS4 Settings"},
                                         Folder{{{11, 2}}, "Adobe Photoshop CS4.2 Settings"},
                                         Folder{{{12, 0}}, "Adobe Photoshop CS5 Settings"},
                                         Folder{{{12, 1}}, "Adobe Photoshop CS5.1 Settings"},
                                         Folder{{{12, -1}}, "Adobe Photoshop CS5.1 Settings"},
                                         Folder{{{12, 2}}, "Adobe Photoshop CS5.5 Settings"},
                                         Folder{{{12, 3}}, "Adobe Photoshop CS5.5 Settings"},
                                         Folder{{{13, 0}}, "Adobe Photoshop CS6 Settings"},
                                         Folder{{{13, 1}}, "Adobe Photoshop CS6.1 Settings"},
                                         Folder{{{9, 0}}, "Adobe Photoshop CS9 Settings"},
                                         Folder{{{14, 0}}, "Adobe Photoshop CS14 Settings"},
                                         Folder{{{14, 2}}, "Adobe Photoshop CS14.2 Settings"},
                                         Folder{{{-1, -2}}, "Adobe Photoshop CS-1.-2 Settings"},
                                         Folder{{{0, 3}}, "Adobe Photoshop CS0.3 Settings"},
                                         Folder{std::nullopt, "Adobe Photoshop CS0 Settings"}),
                         [](const auto& test) { return "Row" + std::to_string(test.index); });

TEST_F(ShortcutFilePath, TriesTheFourNamesInOrder) {
  for (const char* name : kNames) writeFile(folder(), name, fileWithKey(name[0]));
  for (const char* name : kNames) {
    EXPECT_EQ(readKey(), name[0]);
    std::filesystem::remove(folder() / name);
  }
  EXPECT_EQ(readKey(), '\0');
}

TEST_F(ShortcutFilePath, PrefersTheEnglishFileToTheGermanOne) {
  writeFile(folder(), "Tastaturbefehle.psp", fileWithKey('g'));
  writeFile(folder(), "Keyboard Shortcuts.psp", fileWithKey('e'));
  EXPECT_EQ(readKey(), 'e');
}

TEST_F(ShortcutFilePath, StopsAtTheFirstFileThatOpens) {
  writeFile(folder(), "Tastaturbefehle.psp", fileWithKey('g'));
  writeFile(folder(), "Keyboard Shortcuts.psp", "");
  EXPECT_EQ(readKey(), '\0') << "an empty file ends the search";
  writeFile(folder(), "Keyboard Shortcuts.psp", std::string(1000, 'x'));
  EXPECT_EQ(readKey(), '\0') << "and so does one without a record";
}

TEST_F(ShortcutFilePath, SpellsTheSpanishNameWithACapitalGraveE) {
  writeFile(folder(), "Métodos abrev de teclado.psp", fileWithKey('x'));
  EXPECT_EQ(readKey(), '\0');
  writeFile(folder(), "M\xC3\x88todos abrev de teclado.psp", fileWithKey('y'));
  EXPECT_EQ(readKey(), 'y');
}

TEST_F(ShortcutFilePath, CreatesAMissingPreferencesFolder) {
  std::filesystem::remove_all(machine_.preferences());
  EXPECT_EQ(readKey(), '\0');
  EXPECT_TRUE(std::filesystem::is_directory(machine_.preferences()));
}
