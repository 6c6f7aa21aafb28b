// The files that each version of the host keeps in the user's preferences folder.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "simulator/scenario/Scenario.h"

namespace simulator {

/// A plug-in's shortcut in the host's keyboard-shortcuts file.
struct ShortcutRecord {
  std::string plugIn;
  bool control = false;
  bool shift = false;
  bool option = false;
  char key = 0;  ///< 0: `otherKey` holds the key
  char otherKey = 0;
};

/// The path of the preferences file, relative to the preferences folder; nullopt if the version is
/// unknown or keeps no such file.
std::optional<std::filesystem::path> preferencesFileOf(const HostVersion& version);

/// The name of the settings folder in which a version keeps its keyboard shortcuts.
std::filesystem::path settingsFolderOf(int major, int minor);

/// The bytes of a preferences file that holds this preference.
std::string preferencesFile(bool zoomWithScrollWheel);

/// The bytes of a keyboard-shortcuts file with these records, the first at byte `position`.
std::string shortcutsFile(const std::vector<ShortcutRecord>& records, std::size_t position);

/// Writes the host's files into a preferences folder, which is made if necessary; none if the
/// version keeps no preferences file or the host has no zoom preference. Throws
/// `TemporaryFileError` if a file cannot be written.
void writeHostFiles(const HostSetup& host, const std::filesystem::path& preferences);

/// A temporary home folder for the simulated Mac's user; the destructor removes it.
class TemporaryHome {
 public:
  /// Throws `TemporaryFileError` if the folder cannot be made.
  TemporaryHome();
  ~TemporaryHome();
  TemporaryHome(const TemporaryHome&) = delete;
  TemporaryHome& operator=(const TemporaryHome&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace simulator
