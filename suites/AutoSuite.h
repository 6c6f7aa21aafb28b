// A holder of one host suite that acquires it on first use.
//
//   sPSActionDescriptor->Make(&descriptor);   // the first use acquires the suite, or throws
//
// [main-thread]
#pragma once

#include <cstdint>

#include "suites/BasicSuite.h"

/// Holds the suite of procedures `T` with one name and version. Initially empty. The first use
/// acquires the suite, `ReleaseSuite` and the destructor release it, the next use acquires it
/// again.
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
  /// parameter error 0x5061726D if there is no basic suite yet. If `throwOnError` is true, a
  /// failure is thrown as a `std::uint32_t`.
  void AcquireSuite(bool throwOnError) {
    TryAcquireSuite();
    if (error != 0 && throwOnError) throw static_cast<std::uint32_t>(error);
  }

  /// Does what `AcquireSuite(false)` does, for callers that must not throw.
  void TryAcquireSuite() noexcept {
    error = acquireSuite(name, version, reinterpret_cast<const void**>(&suite));
  }

  /// Releases the suite to the host. Does nothing if it is not held, has no name, or there is no
  /// basic suite.
  void ReleaseSuite() {
    if (suite == nullptr || name == nullptr) return;
    if (releaseSuite(name, version)) suite = nullptr;
  }

  /// Returns the suite's procedures, acquiring them if they are not held. Throws what
  /// `AcquireSuite(true)` throws.
  const T* operator->() {
    if (suite == nullptr) AcquireSuite(true);
    return suite;
  }

  const T* suite = nullptr;
  std::int32_t version;
  const char* name;
  std::int32_t error = 0;
};
