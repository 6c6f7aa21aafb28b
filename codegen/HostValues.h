// Owners of the host's values that the generator reads, in addition to the containers in
// suites/HostObjects.h. [main-thread]
#pragma once

#include <cstdint>
#include <limits>

#include "hostutil/Owned.h"
#include "suites/HostObjects.h"

/// Acquires the suite unless it is held already; false if the host does not provide it. Later uses
/// of a held suite do not throw.
template <class T>
bool hold(AutoSuite<T>& holder) {
  if (holder.suite == nullptr) holder.AcquireSuite(false);
  return holder.suite != nullptr;
}

/// Acquires the suites that every walk needs, in this order; false at the first that is missing.
inline bool holdActionSuites() {
  return hold(sPSActionDescriptor) && hold(sPSActionList) && hold(sPSActionReference) &&
         hold(sPSActionControl);
}

/// Whether a number of items, characters or bytes that the host reports can be true: with one more
/// for a terminator, it fits into 31 bits.
constexpr bool isCount(std::uint32_t number) {
  return number < std::uint32_t{std::numeric_limits<std::int32_t>::max()};
}

inline void releaseText(ASZString text) { sASZString->Release(text); }
inline void disposeAlias(Handle alias) { sPSHandle->DisposeRegularHandle(alias); }

/// REQUIRES, of both: the suite that releases the value is held before the value is read.
using OwnedText = Owned<ASZString, releaseText>;
using OwnedAlias = Owned<Handle, disposeAlias>;
