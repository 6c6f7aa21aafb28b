#include "hostactions/ShortcutFile.h"

#include <string.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "hostactions/FileChunk.h"
#include "hostactions/HostVersion.h"
#include "hostactions/PreferencesFolder.h"
#include "hostutil/File.h"

namespace {

constexpr CFIndex kPathSize = 1024;

/// The first six characters of the plug-in's name as the host writes them, four bytes each.
constexpr std::string_view kRecordName("M\0\0\0r\0\0\0v\0\0\0P\0\0\0h\0\0\0o\0\0\0",
                                       FileChunk::kLongestPattern);

/// Offsets into the record, from the first byte after the name.
constexpr std::size_t kControlFlag = 11;
constexpr std::size_t kShiftFlag = 12;
constexpr std::size_t kOptionFlag = 13;
constexpr std::size_t kKey = 18;
constexpr std::size_t kOtherKey = 20;
constexpr char kOtherKeys[] = "zxcv`abdemgo";

/// Virtual key codes of the modifier keys. They are not single bits: merged by OR, Shift and
/// Control give the code of Control. Kept as callers in the field have it.
constexpr unsigned char kControlKeyCode = 59;
constexpr unsigned char kShiftKeyCode = 56;
constexpr unsigned char kOptionKeyCode = 58;

/// The file's names in the order in which they are tried. The host spells the Spanish one this way.
constexpr const char* kFileNames[] = {"Keyboard Shortcuts.psp", "Raccourcis clavier.psp",
                                      "MÈtodos abrev de teclado.psp", "Tastaturbefehle.psp"};

/// The version in the name of the host's settings folder: "CS" and n, or n.m if m is not 0.
struct MarketingVersion {
  int n;
  int m;
};

MarketingVersion marketingVersion(int major, int minor) {
  switch (major) {
    case 10:
      return {3, minor};
    case 11:
      return {4, minor};
    case 12:
      if (minor == 0) return {5, 0};
      return {5, minor < 2 ? 1 : 5};
    case 13:
      return {6, minor};
    default:
      return {major, minor};
  }
}

std::string settingsFolderName() {
  int major = 0;
  int minor = 0;
  PSMajorVersion(&major, &minor);
  const auto [n, m] = marketingVersion(major, minor);
  char name[1024];
  if (m == 0) {
    std::snprintf(name, sizeof name, "/Adobe Photoshop CS%i Settings/", n);
  } else {
    std::snprintf(name, sizeof name, "/Adobe Photoshop CS%i.%i Settings/", n, m);
  }
  return name;
}

/// Returns the path of the settings folder, valid until the next call. The last one is never freed.
const char* settingsFolderPath() {
  static char* basePath = nullptr;
  const std::string name = settingsFolderName();
  char folder[kPathSize];
  copyPreferencesFolderPath(folder, kPathSize);
  std::free(basePath);
  basePath = strdup((folder + name).c_str());
  return basePath;
}

File openShortcutFile(const std::string& basePath) {
  for (const char* name : kFileNames) {
    File file(std::fopen((basePath + name).c_str(), "rb"));
    if (file) return file;
  }
  return File();
}

/// Reads the chunk that follows the name found at `name` in the chunk.
void readRecord(std::FILE* file, FileChunk& chunk, std::size_t name) {
  const auto afterName = static_cast<long>(name + kRecordName.size());
  std::fseek(file, afterName - static_cast<long>(chunk.size), SEEK_CUR);
  chunk.read(file);
}

char keyOf(const unsigned char* record) {
  if (record[kKey] != 0) return static_cast<char>(record[kKey]);
  const char key = static_cast<char>(record[kOtherKey]);
  return std::strchr(kOtherKeys, key) != nullptr ? key : '\0';
}

Shortcut decode(const unsigned char* record) {
  const int modifier = (record[kControlFlag] != 0 ? kControlKeyCode : 0) |
                       (record[kShiftFlag] != 0 ? kShiftKeyCode : 0) |
                       (record[kOptionFlag] != 0 ? kOptionKeyCode : 0);
  return {static_cast<unsigned char>(modifier), keyOf(record)};
}

bool findShortcut(std::FILE* file, Shortcut& shortcut) {
  FileChunk chunk;
  while (chunk.read(file)) {
    const std::size_t name = chunk.find(kRecordName);
    if (name == chunk.size) continue;
    readRecord(file, chunk, name);
    shortcut = decode(chunk.bytes);
    return true;
  }
  return false;
}

}  // namespace

bool readPluginShortcut(Shortcut& shortcut) {
  const File file = openShortcutFile(settingsFolderPath());
  return file && findShortcut(file.get(), shortcut);
}
