// References made of their parts, the innermost first.
//
//   ActionReference reference;
//   error = makeReference(reference, indexPart(kClassLayer, 2), currentPart(kClassDocument));
//
// All functions throw the host's code as a `std::uint32_t` if the suite cannot be acquired.
// [main-thread]
#pragma once

#include <HostTerms.h>

#include "suites/HostObjects.h"

/// Each part puts itself into a reference and returns the host error, 0 for success.
inline auto namePart(DescriptorClassID classID, const char* name) {
  return [=](PIActionReference r) { return sPSActionReference->PutName(r, classID, name); };
}

inline auto indexPart(DescriptorClassID classID, std::uint32_t index) {
  return [=](PIActionReference r) { return sPSActionReference->PutIndex(r, classID, index); };
}

inline auto identifierPart(DescriptorClassID classID, std::uint32_t identifier) {
  return [=](PIActionReference r) {
    return sPSActionReference->PutIdentifier(r, classID, identifier);
  };
}

inline auto propertyPart(DescriptorClassID classID, DescriptorKeyID key) {
  return [=](PIActionReference r) { return sPSActionReference->PutProperty(r, classID, key); };
}

inline auto classPart(DescriptorClassID classID) {
  return [=](PIActionReference r) { return sPSActionReference->PutClass(r, classID); };
}

/// The current object of the class.
inline auto currentPart(DescriptorClassID classID) {
  return [=](PIActionReference r) {
    return sPSActionReference->PutEnumerated(r, classID, kTypeOrdinal, kEnumTarget);
  };
}

/// Makes a reference and puts the parts into it one after the other, until one fails. Returns the
/// host error, 0 for success.
template <class... Parts>
int makeReference(ActionReference& reference, const Parts&... putPart) {
  int error = sPSActionReference->Make(reference.out());
  ((error = error != 0 ? error : putPart(reference.get())), ...);
  return error;
}

/// The same, then has the host answer the reference with the descriptor `result`.
template <class... Parts>
int getAnswer(ActionReference& reference, ActionDescriptor& result, const Parts&... putPart) {
  const int error = makeReference(reference, putPart...);
  return error != 0 ? error : sPSActionControl->Get(result.out(), reference.get());
}
