#include "hostactions/ZoomPreference.h"

#include <cstdio>
#include <string>
#include <string_view>

#include "hostactions/FileChunk.h"
#include "hostactions/HostVersion.h"
#include "hostactions/PreferencesFolder.h"
#include "hostutil/File.h"

namespace {

constexpr CFIndex kPathSize = 256;
constexpr std::string_view kKey = "zoomWithScrollWheel";
/// The offset of the value from the start of the key.
constexpr std::size_t kValueOffset = 23;

const char* preferencesFileOf(int major, int minor) {
  switch (major) {
    case 10:
      return "/Adobe Photoshop CS3 Settings/Adobe Photoshop CS3 Prefs.psp";
    case 11:
      return "/Adobe Photoshop CS4 Settings/Adobe Photoshop CS4 Prefs.psp";
    case 12:
      if (minor < 1) return "/Adobe Photoshop CS5 Settings/Adobe Photoshop CS5 Prefs.psp";
      if (minor == 1) return "/Adobe Photoshop CS5.1 Settings/Adobe Photoshop CS5.1 Prefs.psp";
      return "/Adobe Photoshop CS5.5 Settings/Adobe Photoshop CS5.5 Prefs.psp";
    case 13:
      return "/Adobe Photoshop CS6 Settings/Adobe Photoshop CS6 Prefs.psp";
    default:
      // Because of the colon this names no existing file, so the preference is off for any other
      // version of the host.
      return "/Adobe Photoshop CS2 Settings:Adobe Photoshop CS2 Prefs.psp";
  }
}

std::string preferencesFilePath() {
  char folder[kPathSize];
  copyPreferencesFolderPath(folder, kPathSize);
  int major = 0;
  int minor = 0;
  PSMajorVersion(&major, &minor);
  return std::string(folder) + preferencesFileOf(major, minor);
}

/// Reads the value of the key at `key`. The subtraction wraps, so in a chunk shorter than the
/// offset the value is always taken from the buffer. If the value lies beyond the end of a longer
/// chunk, the file's next byte is taken instead, which need not be the byte at the offset. Both are
/// kept as the host's files have it.
bool readValue(const FileChunk& chunk, std::size_t key, std::FILE* file) {
  if (chunk.size - kValueOffset > key) return chunk.bytes[key + kValueOffset] != 0;
  unsigned char next = 0;
  return std::fread(&next, 1, 1, file) == 1 && next != 0;
}

bool readPreference(std::FILE* file) {
  FileChunk chunk;
  while (chunk.read(file)) {
    const std::size_t key = chunk.find(kKey);
    if (key < chunk.size) return readValue(chunk, key, file);
  }
  return false;
}

}  // namespace

bool readZoomWithScrollWheel() {
  const std::string path = preferencesFilePath();
  const File file(std::fopen(path.c_str(), "rb"));
  if (!file) {
    std::printf("getZoomWithScrollWheel open error path=%s\n", path.c_str());
    return false;
  }
  return readPreference(file.get());
}
