// Owners of the host's action objects, which free what they hold exactly once.
//
//   ActionReference reference;
//   error = sPSActionReference->Make(reference.out());
//
// [main-thread]
#pragma once

#include <PIActions.h>

#include "hostutil/Owned.h"
#include "suites/Suites.h"

/// Frees a host object through its suite. Throws nothing, because it also runs while the exception
/// of a failed acquisition unwinds the stack; the object leaks if the host still refuses the suite.
template <auto& Suite, class Object>
void freeHostObject(Object object) noexcept {
  if (Suite.suite == nullptr) Suite.TryAcquireSuite();
  if (Suite.suite != nullptr) Suite.suite->Free(object);
}

template <class Object, auto& Suite>
using HostObject = Owned<Object, freeHostObject<Suite, Object>>;

using ActionDescriptor = HostObject<PIActionDescriptor, sPSActionDescriptor>;
using ActionReference = HostObject<PIActionReference, sPSActionReference>;
using ActionList = HostObject<PIActionList, sPSActionList>;
