// The host's values that the generator reads, each in a holder that gives it back, beside the
// containers that plugin/HostObjects.h holds. [main-thread]
#pragma once

#include "hostutil/Owned.h"
#include "suites/HostObjects.h"

/// Makes sure that a suite is held, so that no later use of it throws. False where the host does
/// not hand it out.
template <class T>
bool hold(AutoSuite<T>& holder) {
  if (holder.suite == nullptr) holder.AcquireSuite(false);
  return holder.suite != nullptr;
}

/// The suites without which nothing can be walked, in the order in which they are asked for.
inline bool holdActionSuites() {
  return hold(sPSActionDescriptor) && hold(sPSActionList) && hold(sPSActionReference) &&
         hold(sPSActionControl);
}

inline void releaseText(ASZString text) { sASZString->Release(text); }
inline void disposeAlias(Handle alias) { sPSHandle->DisposeRegularHandle(alias); }

/// REQUIRES of both: the suite that takes the value back is held before the value is read.
using OwnedText = Owned<ASZString, releaseText>;
using OwnedAlias = Owned<Handle, disposeAlias>;
