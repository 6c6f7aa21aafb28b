#include "hostutil/CallbackChecks.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace {

/// The first fields of every record.
struct RecordHead {
  int16 version;
  int16 count;
};

/// What an available record must have.
struct Requirement {
  int16 version;
  int16 minimumCount;
  std::size_t presentProcedures;  ///< the first so many must not be null
};

// For records whose count does not matter, or that have another field in its place.
constexpr int16 kAnyCount = std::numeric_limits<int16>::min();

constexpr Requirement kBufferProcs = {2, 8, 8};
constexpr Requirement kResourceProcs = {3, 4, 4};
constexpr Requirement kHandleProcs = {1, 8, 4};
constexpr Requirement kPropertyProcs = {1, 2, 2};
constexpr Requirement kChannelPortProcs = {1, 3, 3};
constexpr Requirement kDescriptorParameters = {0, kAnyCount, 0};
constexpr Requirement kWriteDescriptorProcs = {0, kAnyCount, 0};
constexpr Requirement kReadDescriptorProcs = {0, 18, 0};

/// From its second word on, a record consists of procedure pointers.
bool procedureIsPresent(const void* record, std::size_t index) {
  std::uintptr_t procedure;
  static_assert(sizeof procedure == sizeof(AdvanceStateProc));
  const auto* bytes = static_cast<const char*>(record);
  std::memcpy(&procedure, bytes + (index + 1) * sizeof procedure, sizeof procedure);
  return procedure != 0;
}

bool proceduresArePresent(const void* record, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (!procedureIsPresent(record, i)) return false;
  }
  return true;
}

/// The rule that CallbackChecks.h states.
bool isAvailable(const void* record, const Requirement& required, bool* newerVersion) {
  if (record == nullptr) return false;
  RecordHead head;
  std::memcpy(&head, record, sizeof head);
  if (head.version > required.version) {
    // Whether to trust a newer host is the caller's decision.
    if (newerVersion != nullptr) *newerVersion = true;
    return false;
  }
  return head.version == required.version && head.count >= required.minimumCount &&
         proceduresArePresent(record, required.presentProcedures);
}

}  // namespace

bool HostBufferProcsAvailable(const BufferProcs* procs, bool* newerVersion) {
  return isAvailable(procs, kBufferProcs, newerVersion);
}

bool HostResourceProcsAvailable(const ResourceProcs* procs, bool* newerVersion) {
  return isAvailable(procs, kResourceProcs, newerVersion);
}

bool HostHandleProcsAvailable(const HandleProcs* procs, bool* newerVersion) {
  return isAvailable(procs, kHandleProcs, newerVersion);
}

bool HostPropertyAvailable(const PropertyProcs* procs, bool* newerVersion) {
  return isAvailable(procs, kPropertyProcs, newerVersion);
}

bool HostChannelPortAvailable(const ChannelPortProcs* procs, bool* newerVersion) {
  return isAvailable(procs, kChannelPortProcs, newerVersion);
}

bool HostDisplayPixelsAvailable(DisplayPixelsProc displayProc, bool*) {
  return displayProc != nullptr;
}

bool HostDescriptorAvailable(const PIDescriptorParameters* procs, bool* newerVersion) {
  // A newer sub-record does not set the flag: a newer host reports itself in the outer record.
  return isAvailable(procs, kDescriptorParameters, newerVersion) &&
         isAvailable(procs->writeDescriptorProcs, kWriteDescriptorProcs, nullptr) &&
         isAvailable(procs->readDescriptorProcs, kReadDescriptorProcs, nullptr);
}
