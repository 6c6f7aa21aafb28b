#include "simulator/macos/Folders.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <vector>

#include "simulator/macos/MacFaults.h"

namespace simulator {

namespace {

/// An FSRef stores a magic number and an index into the path table, so refs we did not create are
/// recognised.
constexpr UInt8 kRefMark[8] = {'F', 'S', 'R', 'e', 'f', 's', 'i', 'm'};

struct Folders {
  std::mutex mutex;
  std::optional<std::filesystem::path> home;
  std::vector<std::string> paths;
};

Folders& folders() {
  static Folders& instance = *new Folders;
  return instance;
}

}  // namespace

void setHomeFolder(std::filesystem::path home) {
  const std::lock_guard lock(folders().mutex);
  folders().home = std::move(home);
}

std::optional<std::filesystem::path> homeFolder() {
  const std::lock_guard lock(folders().mutex);
  return folders().home;
}

std::filesystem::path preferencesFolder(const std::filesystem::path& home) {
  return home / "Library" / "Preferences";
}

FSRef refOfPath(const std::string& path) {
  const std::lock_guard lock(folders().mutex);
  std::vector<std::string>& paths = folders().paths;
  const auto known = std::find(paths.begin(), paths.end(), path);
  const auto number = static_cast<std::uint64_t>(known - paths.begin());
  if (known == paths.end()) paths.push_back(path);
  FSRef ref = {};
  std::memcpy(ref.hidden, kRefMark, sizeof kRefMark);
  std::memcpy(ref.hidden + sizeof kRefMark, &number, sizeof number);
  return ref;
}

std::optional<std::string> pathOfRef(const FSRef& ref) {
  std::uint64_t number = 0;
  std::memcpy(&number, ref.hidden + sizeof kRefMark, sizeof number);
  const std::lock_guard lock(folders().mutex);
  const std::vector<std::string>& paths = folders().paths;
  if (std::memcmp(ref.hidden, kRefMark, sizeof kRefMark) != 0 || number >= paths.size()) return {};
  return paths[number];
}

}  // namespace simulator

OSErr FSFindFolder(FSVolumeRefNum vRefNum, OSType folderType, Boolean createFolder,
                   FSRef* foundRef) {
  if (const auto error = simulator::failureOf(simulator::MacCall::kFSFindFolder)) {
    return static_cast<OSErr>(*error);
  }
  const auto home = simulator::homeFolder();
  const bool known = vRefNum == kUserDomain && folderType == kPreferencesFolderType;
  if (!home || !known) return fnfErr;
  const std::filesystem::path folder = simulator::preferencesFolder(*home);
  std::error_code error;
  if (createFolder) std::filesystem::create_directories(folder, error);
  if (!std::filesystem::is_directory(folder, error)) return fnfErr;
  *foundRef = simulator::refOfPath(folder.string());
  return noErr;
}
