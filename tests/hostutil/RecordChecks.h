// The checks of the host's callback records, as tables for the tests of checks and warnings.
#pragma once

#include "hostutil/CallbackChecks.h"
#include "simulator/host/callbacks/CallbackRecords.h"

namespace hostutil_test {

/// A check, its warning, what they require, and how to make a record of the simulated host.
template <class Record>
struct Check {
  const char* name;
  bool (*available)(const Record*, bool*);
  bool (*warn)(const Record*);
  Record (*record)(int16 version, int16 count);
  int version;
  int count;          ///< the least
  int present;        ///< the first so many must not be null
  int procedures;     ///< how many the record has
  const char* alert;  ///< what the warning shows
};

inline constexpr Check<BufferProcs> kBuffers = {"buffers",
                                                HostBufferProcsAvailable,
                                                WarnHostBufferProcsAvailable,
                                                simulator::bufferProcs,
                                                2,
                                                8,
                                                8,
                                                8,
                                                "2.5."};
inline constexpr Check<ResourceProcs> kResources = {"resources",
                                                    HostResourceProcsAvailable,
                                                    WarnHostResourceProcsAvailable,
                                                    simulator::resourceProcs,
                                                    3,
                                                    4,
                                                    4,
                                                    4,
                                                    "3.0."};
inline constexpr Check<HandleProcs> kHandles = {"handles",
                                                HostHandleProcsAvailable,
                                                WarnHostHandleProcsAvailable,
                                                simulator::handleProcs,
                                                1,
                                                8,
                                                4,
                                                8,
                                                "3.0."};
inline constexpr Check<PropertyProcs> kProperties = {"properties",
                                                     HostPropertyAvailable,
                                                     WarnHostPropertyAvailable,
                                                     simulator::propertyProcs,
                                                     1,
                                                     2,
                                                     2,
                                                     2,
                                                     "2.5."};
inline constexpr Check<ChannelPortProcs> kPorts = {"channel ports",
                                                   HostChannelPortAvailable,
                                                   WarnHostChannelPortAvailable,
                                                   simulator::channelPortProcs,
                                                   1,
                                                   3,
                                                   3,
                                                   3,
                                                   "4.0."};

/// Calls `test` with the check of each record that has a count of procedures.
template <class Test>
void forEachCheck(Test test) {
  test(kBuffers);
  test(kResources);
  test(kHandles);
  test(kProperties);
  test(kPorts);
}

/// The record of `check` with these numbers.
template <class Record>
Record recordOf(const Check<Record>& check, int version, int count) {
  return check.record(static_cast<int16>(version), static_cast<int16>(count));
}

}  // namespace hostutil_test
