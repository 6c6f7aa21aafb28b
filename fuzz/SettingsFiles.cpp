// Reads any bytes as the host's preferences and keyboard-shortcuts files, and compares what is
// found with a search in the whole text, in which blocks and what is left of a longer one before
// are plain.
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>

#include "fuzz/Input.h"
#include "hostactions/HostVersion.h"
#include "hostactions/PreferencesFolder.h"
#include "hostactions/ShortcutFile.h"
#include "hostactions/ZoomPreference.h"

namespace {

constexpr std::size_t kBlock = 200;
constexpr std::size_t kLongest = 24;

/// A folder in memory, or else on the disk.
const std::filesystem::path& preferences() {
  static const std::filesystem::path folder = [] {
    const std::filesystem::path memory = "/dev/shm";
    const bool hasMemory = access(memory.c_str(), W_OK) == 0;
    std::string pattern =
        (hasMemory ? memory : std::filesystem::temp_directory_path()) / "mrv-fuzz-XXXXXX";
    fuzz::require(mkdtemp(pattern.data()) != nullptr, "a folder can be made");
    std::filesystem::create_directory(pattern + "/Adobe Photoshop CS5.1 Settings");
    std::atexit([] { std::filesystem::remove_all(preferences()); });
    return std::filesystem::path(pattern);
  }();
  return folder;
}

void write(const char* name, std::string_view bytes) {
  std::ofstream(preferences() / "Adobe Photoshop CS5.1 Settings" / name, std::ios::binary) << bytes;
}

/// The buffer into which a file is read block by block: a shorter block leaves the rest as it was.
struct Buffer {
  std::string bytes = std::string(kBlock + kLongest, '\0');
  std::size_t size = 0;

  void fill(std::string_view block) {
    size = block.size();
    std::copy(block.begin(), block.end(), bytes.begin());
  }

  std::optional<std::size_t> find(std::string_view pattern) const {
    const std::size_t place = bytes.find(pattern);
    return place < size ? std::optional(place) : std::nullopt;
  }
};

bool expectedPreference(std::string_view file) {
  Buffer buffer;
  for (std::size_t at = 0; at < file.size(); at += kBlock) {
    buffer.fill(file.substr(at, kBlock));
    const auto key = buffer.find("zoomWithScrollWheel");
    if (!key) continue;
    const bool inBuffer = buffer.size < 23 || *key + 23 < buffer.size;
    if (inBuffer) return buffer.bytes[*key + 23] != 0;
    const std::string_view rest = file.substr(std::min(file.size(), at + kBlock));
    return !rest.empty() && rest[0] != 0;
  }
  return false;
}

std::optional<Shortcut> expectedShortcut(std::string_view file) {
  using namespace std::string_view_literals;
  constexpr std::string_view kName = "M\0\0\0r\0\0\0v\0\0\0P\0\0\0h\0\0\0o\0\0\0"sv;
  Buffer buffer;
  for (std::size_t at = 0; at < file.size(); at += kBlock) {
    buffer.fill(file.substr(at, kBlock));
    const auto name = buffer.find(kName);
    if (!name) continue;
    const std::size_t record = at + *name + kName.size();
    const std::string_view rest = record < file.size() ? file.substr(record, kBlock) : ""sv;
    if (!rest.empty()) buffer.fill(rest);
    const std::string& bytes = buffer.bytes;
    const int modifier =
        (bytes[11] != 0 ? 59 : 0) | (bytes[12] != 0 ? 56 : 0) | (bytes[13] != 0 ? 58 : 0);
    const bool isOther = "zxcv`abdemgo"sv.find(bytes[20]) != kName.npos;
    const char key = bytes[18] != 0 ? bytes[18] : isOther ? bytes[20] : '\0';
    return Shortcut{static_cast<unsigned char>(modifier), key};
  }
  return std::nullopt;
}

}  // namespace

// Stand for the host, so that the target needs none.

int PSMajorVersion(int* major, int* minor) {
  *major = 12;
  *minor = 1;
  return 12;
}

void copyPreferencesFolderPath(char* path, CFIndex size) {
  std::snprintf(path, static_cast<std::size_t>(size), "%s", preferences().c_str());
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  write("Adobe Photoshop CS5.1 Prefs.psp", bytes);
  fuzz::require(readZoomWithScrollWheel() == expectedPreference(bytes),
                "the preference is what a search in the whole file finds");

  write("Keyboard Shortcuts.psp", bytes);
  Shortcut shortcut;
  const bool found = readPluginShortcut(shortcut);
  const std::optional<Shortcut> expected = expectedShortcut(bytes);
  fuzz::require(found == expected.has_value(), "the record is found where there is one");
  fuzz::require(
      !found || (shortcut.modifier == expected->modifier && shortcut.key == expected->key),
      "the shortcut is what the record holds");
  return 0;
}
