// The host's values that the generator reads, each in a holder that gives it back, beside the
// containers that plugin/HostObjects.h holds. [main-thread]
#pragma once

#include "codegen/Owned.h"
#include "plugin/HostObjects.h"

/// Makes sure that a suite is held, so that no later use of it throws. False where the host does
/// not hand it out.
template <class T>
bool Hold(AutoSuite<T>& holder) {
  if (holder.suite == nullptr) holder.AcquireSuite(false);
  return holder.suite != nullptr;
}

/// The suites without which nothing can be walked, in the order in which they are asked for.
inline bool HoldActionSuites() {
  return Hold(sPSActionDescriptor) && Hold(sPSActionList) && Hold(sPSActionReference) &&
         Hold(sPSActionControl);
}

inline void ReleaseText(ASZString text) { sASZString->Release(text); }
inline void DisposeAlias(Handle alias) { sPSHandle->DisposeRegularHandle(alias); }

/// REQUIRES of both: the suite that takes the value back is held before the value is read.
using OwnedText = Owned<ASZString, ReleaseText>;
using OwnedAlias = Owned<Handle, DisposeAlias>;
