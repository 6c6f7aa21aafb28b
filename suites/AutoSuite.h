// A holder of one host suite, acquired on first use.
//
//   sPSActionDescriptor->Make(&descriptor);   // the first use acquires the suite, or throws
//
// [main-thread]
#pragma once

#include <cstdint>

#include "suites/BasicSuite.h"

/// Holds the suite `T` of one name and version. Empty at first; filled by the first use, emptied by
/// `ReleaseSuite` or at process exit, and filled again by the next use.
template <class T>
class AutoSuite {
 public:
  /// REQUIRES: `suiteName` outlives the holder.
  AutoSuite(const char* suiteName, std::int32_t suiteVersion)
      : version(suiteVersion), name(suiteName) {}
  ~AutoSuite() { ReleaseSuite(); }
  AutoSuite(const AutoSuite&) = delete;
  AutoSuite& operator=(const AutoSuite&) = delete;

  /// Asks the host for the suite and stores the result in `error`: 0, the host's code, or the
  /// parameter error where there is no basic suite yet. With `throwOnError` a failure throws that
  /// code as a `std::uint32_t`.
  void AcquireSuite(bool throwOnError) {
    TryAcquireSuite();
    if (error != 0 && throwOnError) throw static_cast<std::uint32_t>(error);
  }

  /// `AcquireSuite(false)`, for places that nothing may be thrown out of.
  void TryAcquireSuite() noexcept {
    error = acquireSuite(name, version, reinterpret_cast<const void**>(&suite));
  }

  /// Gives the suite back to the host; nothing where it is not held or the host is not known.
  void ReleaseSuite() {
    if (suite == nullptr || name == nullptr) return;
    if (releaseSuite(name, version)) suite = nullptr;
  }

  /// The suite's procedures, acquired where they are not held yet. Throws as `AcquireSuite(true)`.
  const T* operator->() {
    if (suite == nullptr) AcquireSuite(true);
    return suite;
  }

  const T* suite = nullptr;
  std::int32_t version;
  const char* name;
  std::int32_t error = 0;
};
