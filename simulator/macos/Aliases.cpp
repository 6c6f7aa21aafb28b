#include "simulator/macos/Aliases.h"

#include <CoreServices/CoreServices.h>

#include <cstring>
#include <filesystem>

#include "simulator/base/CallError.h"
#include "simulator/base/Text.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/Folders.h"
#include "simulator/macos/MacFaults.h"
#include "simulator/macos/MemoryHandles.h"

namespace simulator {

namespace {

/// The first bytes of a simulated alias, in place of a real alias's header; the path follows.
constexpr std::string_view kAliasHead = "alias:";

}  // namespace

AliasHandle makeAlias(const std::string& path, const char* maker) {
  return reinterpret_cast<AliasHandle>(
      theMemoryHandles().make(std::string(kAliasHead) + path, maker));
}

std::optional<std::string> pathOfAlias(AliasHandle alias, const char* procedure) {
  try {
    const std::string bytes = theMemoryHandles().bytes(reinterpret_cast<Handle>(alias), procedure);
    if (!bytes.starts_with(kAliasHead)) return std::nullopt;
    return bytes.substr(kAliasHead.size());
  } catch (const CallError&) {
    return std::nullopt;
  }
}

}  // namespace simulator

using namespace simulator;

OSErr FSResolveAlias(const FSRef*, AliasHandle alias, FSRef* target, Boolean* wasChanged) {
  if (const auto error = failureOf(MacCall::kFSResolveAlias)) return static_cast<OSErr>(*error);
  if (alias == nullptr) return paramErr;
  const auto path = pathOfAlias(alias, "FSResolveAlias");
  std::error_code error;
  if (!path || !std::filesystem::exists(*path, error)) return fnfErr;
  *target = refOfPath(*path);
  *wasChanged = false;
  return noErr;
}

OSStatus FSCopyAliasInfo(AliasHandle alias, HFSUniStr255*, HFSUniStr255*, CFStringRef* pathString,
                         FSAliasInfoBitmap*, FSAliasInfo*) {
  if (const auto error = failureOf(MacCall::kFSCopyAliasInfo)) return *error;
  if (alias == nullptr) return paramErr;
  if (pathString == nullptr) return noErr;
  const auto path = pathOfAlias(alias, "FSCopyAliasInfo");
  *pathString = nullptr;
  if (path && isUtf8(*path)) {
    *pathString = static_cast<CFStringRef>(theCFObjects().make(CFText{utf16From(*path)}));
  }
  return noErr;
}

Size GetAliasSize(AliasHandle alias) {
  try {
    return static_cast<Size>(
        theMemoryHandles().size(reinterpret_cast<Handle>(alias), "GetAliasSize"));
  } catch (const CallError&) {
    return 0;
  }
}

OSErr PtrToHand(const void* bytes, Handle* handle, long size) {
  if (const auto error = failureOf(MacCall::kPtrToHand)) return static_cast<OSErr>(*error);
  *handle = theMemoryHandles().make(
      std::string_view(static_cast<const char*>(bytes), static_cast<std::size_t>(size)),
      "PtrToHand");
  return noErr;
}

OSStatus FSRefMakePath(const FSRef* ref, UInt8* path, UInt32 pathBufferSize) {
  constexpr OSStatus kPathTooLong = -2110;
  if (const auto error = failureOf(MacCall::kFSRefMakePath)) return *error;
  const auto known = pathOfRef(*ref);
  if (!known) return fnfErr;
  if (known->size() >= pathBufferSize) return kPathTooLong;
  std::memcpy(path, known->c_str(), known->size() + 1);
  return noErr;
}
