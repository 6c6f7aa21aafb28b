// The files that a host of some version keeps in the user's preferences folder.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "simulator/scenario/Scenario.h"

namespace simulator {

/// A shortcut of a plug-in as the host's keyboard-shortcuts file holds it.
struct ShortcutRecord {
  std::string plugIn;
  bool control = false;
  bool shift = false;
  bool option = false;
  char key = 0;  ///< 0: given by `otherKey`
  char otherKey = 0;
};

/// The path of the preferences file below the preferences folder; none for a version that has no
/// place for one.
std::optional<std::filesystem::path> preferencesFileOf(const HostVersion& version);

/// The settings folder in which a version keeps its keyboard shortcuts.
std::filesystem::path settingsFolderOf(int major, int minor);

/// The bytes of a preferences file with that preference in it.
std::string preferencesFile(bool zoomWithScrollWheel);

/// The bytes of a keyboard-shortcuts file with those records, the first name at `position`.
std::string shortcutsFile(const std::vector<ShortcutRecord>& records, std::size_t position);

/// Writes the files of such a host into a preferences folder.
void writeHostFiles(const HostSetup& host, const std::filesystem::path& preferences);

/// A home folder of its own for a user of the simulated Mac, removed at the end.
class TemporaryHome {
 public:
  TemporaryHome();
  ~TemporaryHome();
  TemporaryHome(const TemporaryHome&) = delete;
  TemporaryHome& operator=(const TemporaryHome&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace simulator
