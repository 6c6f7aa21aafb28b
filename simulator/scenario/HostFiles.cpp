#include "simulator/scenario/HostFiles.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "simulator/macos/Folders.h"
#include "simulator/scenario/InputFile.h"
#include "simulator/scenario/Leftovers.h"

namespace simulator {

namespace {

/// The edition's name, such as "CS5.1"; nullopt for versions that keep no preferences file.
std::optional<std::string> editionOf(int major, int minor) {
  switch (major) {
    case 10:
      return "CS3";
    case 11:
      return "CS4";
    case 12:
      return minor < 1 ? "CS5" : minor == 1 ? "CS5.1" : "CS5.5";
    case 13:
      return "CS6";
    default:
      return std::nullopt;
  }
}

void writeFile(const std::filesystem::path& file, const std::string& bytes) {
  std::filesystem::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream << bytes;
  if (!stream.flush()) {
    throw temporaryFailure("write the host's files");
  }
}

/// Each character as a 32-bit unit, least significant byte first.
std::string wide(const std::string& text) {
  std::string bytes;
  for (const char c : text) bytes += {c, '\0', '\0', '\0'};
  return bytes;
}

/// The first characters of the plug-in's name, then the fields at their offsets.
std::string recordBytes(const ShortcutRecord& record) {
  constexpr std::size_t kNameLength = 6;
  constexpr std::size_t kFields = 64;
  std::string fields(kFields, '\0');
  fields[11] = record.control ? 1 : 0;
  fields[12] = record.shift ? 1 : 0;
  fields[13] = record.option ? 1 : 0;
  fields[18] = record.key;
  fields[20] = record.otherKey;
  return wide(record.plugIn.substr(0, kNameLength)) + fields;
}

}  // namespace

std::optional<std::filesystem::path> preferencesFileOf(const HostVersion& version) {
  if (!version) return std::nullopt;
  const auto edition = editionOf(version->first, version->second);
  if (!edition) return std::nullopt;
  return std::filesystem::path(fmt::format("Adobe Photoshop {} Settings", *edition)) /
         fmt::format("Adobe Photoshop {} Prefs.psp", *edition);
}

std::filesystem::path settingsFolderOf(int major, int minor) {
  const auto [n, m] = [&]() -> std::pair<int, int> {
    switch (major) {
      case 10:
        return {3, minor};
      case 11:
        return {4, minor};
      case 12:
        return {5, minor == 0 ? 0 : minor < 2 ? 1 : 5};
      case 13:
        return {6, minor};
      default:
        return {major, minor};
    }
  }();
  if (m == 0) return fmt::format("Adobe Photoshop CS{} Settings", n);
  return fmt::format("Adobe Photoshop CS{}.{} Settings", n, m);
}

std::string preferencesFile(bool zoomWithScrollWheel) {
  // Only one entry of the file is ever read: a name, a type of four bytes, and the value.
  std::string bytes = "8BPF";
  bytes.append(300, '\0');
  bytes += "zoomWithScrollWheel";
  bytes += {'b', 'o', 'o', 'l', static_cast<char>(zoomWithScrollWheel ? 1 : 0)};
  bytes.append(100, '\0');
  return bytes;
}

std::string shortcutsFile(const std::vector<ShortcutRecord>& records, std::size_t position) {
  std::string bytes(position, '\0');
  for (const ShortcutRecord& record : records) bytes += recordBytes(record);
  return bytes;
}

void writeHostFiles(const HostSetup& host, const std::filesystem::path& preferences) {
  std::filesystem::create_directories(preferences);
  const auto file = preferencesFileOf(host.version);
  if (!file || !host.zoomWithScrollWheel) return;
  writeFile(preferences / *file, preferencesFile(*host.zoomWithScrollWheel));
  const auto [major, minor] = *host.version;
  // Command-Option-Z, as a user might assign it to the plug-in.
  const ShortcutRecord record = {.plugIn = "MrvPhotoshop", .option = true, .key = 'z'};
  writeFile(preferences / settingsFolderOf(major, minor) / "Keyboard Shortcuts.psp",
            shortcutsFile({record}, 100));
}

TemporaryHome::TemporaryHome() {
  std::string name = (temporaryFolder() / "mrvsim-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw temporaryFailure("make a temporary folder");
  }
  path_ = name;
  theLeftovers().add(path_.string());
}

TemporaryHome::~TemporaryHome() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
  theLeftovers().forget(path_.string());
}

}  // namespace simulator
