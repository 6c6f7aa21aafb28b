// Builds references from their parts, the innermost first. A part is a function that puts one form
// into a reference and returns the host error, 0 for success.
//
//   ActionReference reference;
//   error = makeReference(reference, indexPart(kClassLayer, 2), currentPart(kClassDocument));
//
// All functions throw the host's code as a `std::uint32_t` if the suite cannot be acquired.
// [main-thread]
#pragma once

#include <HostTerms.h>

#include "suites/HostObjects.h"

/// The object with a name. `name` must outlive the part.
inline auto namePart(DescriptorClassID classID, const char* name) {
  return [=](PIActionReference r) { return sPSActionReference->PutName(r, classID, name); };
}

/// The object with an index (from 1).
inline auto indexPart(DescriptorClassID classID, std::uint32_t index) {
  return [=](PIActionReference r) { return sPSActionReference->PutIndex(r, classID, index); };
}

/// The object with an identifier.
inline auto identifierPart(DescriptorClassID classID, std::uint32_t identifier) {
  return [=](PIActionReference r) {
    return sPSActionReference->PutIdentifier(r, classID, identifier);
  };
}

/// The property `key`; `classID` is normally kClassProperty.
inline auto propertyPart(DescriptorClassID classID, DescriptorKeyID key) {
  return [=](PIActionReference r) { return sPSActionReference->PutProperty(r, classID, key); };
}

/// The class itself.
inline auto classPart(DescriptorClassID classID) {
  return [=](PIActionReference r) { return sPSActionReference->PutClass(r, classID); };
}

/// The current object of the class.
inline auto currentPart(DescriptorClassID classID) {
  return [=](PIActionReference r) {
    return sPSActionReference->PutEnumerated(r, classID, kTypeOrdinal, kEnumTarget);
  };
}

/// Creates a reference and puts the parts into it in order, stopping at the first that fails.
/// Returns the host error, 0 for success. A reference created before an error stays in the owner.
template <class... Parts>
int makeReference(ActionReference& reference, const Parts&... putPart) {
  int error = sPSActionReference->Make(reference.out());
  ((error = error != 0 ? error : putPart(reference.get())), ...);
  return error;
}

/// Makes the reference, then gets the host's answer to it in `result`. Returns the first host
/// error, 0 for success.
template <class... Parts>
int getAnswer(ActionReference& reference, ActionDescriptor& result, const Parts&... putPart) {
  const int error = makeReference(reference, putPart...);
  return error != 0 ? error : sPSActionControl->Get(result.out(), reference.get());
}
