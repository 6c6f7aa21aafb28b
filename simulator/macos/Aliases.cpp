// Aliases, found again by their paths among the files of this machine.
#include <CoreServices/CoreServices.h>

#include <cstring>
#include <filesystem>

#include "simulator/host/FileReferences.h"
#include "simulator/macos/Folders.h"

using namespace simulator;

OSErr FSResolveAlias(const FSRef*, AliasHandle alias, FSRef* target, Boolean* wasChanged) {
  if (alias == nullptr) return paramErr;
  const auto path = pathOfAlias(alias, "FSResolveAlias");
  std::error_code error;
  if (!path || !std::filesystem::exists(*path, error)) return fnfErr;
  *target = refOfPath(*path);
  *wasChanged = false;
  return noErr;
}

OSStatus FSRefMakePath(const FSRef* ref, UInt8* path, UInt32 pathBufferSize) {
  constexpr OSStatus kPathTooLong = -2110;
  const auto known = pathOfRef(*ref);
  if (!known) return fnfErr;
  if (known->size() >= pathBufferSize) return kPathTooLong;
  std::memcpy(path, known->c_str(), known->size() + 1);
  return noErr;
}
