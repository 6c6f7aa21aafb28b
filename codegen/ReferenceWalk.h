// Reads a reference from the host, form by form, and hands the forms to what writes them.
#pragma once

#include <HostTerms.h>

#include <string_view>

#include "codegen/HostValues.h"
#include "suites/HostObjects.h"
#include "suites/Suites.h"

/// Reads one part of a reference. `Forms` writes the forms in one form of the text: it has
/// `putClass`, `putNumber`, `putEnumerated`, `putProperty` and `putName` for what was read, and
/// `writeError` for a host call that failed and for an unknown form.
template <class Forms>
class PartReader {
 public:
  PartReader(PIActionReference part, Forms& forms) : part_(part), forms_(forms) {}

  void read() {
    DescriptorFormID form = 0;
    DescriptorClassID desiredClass = 0;
    if (!succeeds("GetForm", sPSActionReference->GetForm(part_, &form))) return;
    if (!succeeds("GetDesiredClass", sPSActionReference->GetDesiredClass(part_, &desiredClass))) {
      return;
    }
    readForm(form, desiredClass);
  }

 private:
  void readForm(DescriptorFormID form, DescriptorClassID desiredClass) {
    switch (form) {
      case kFormClass:
        return forms_.putClass(desiredClass);
      case kFormEnumerated:
        return readEnumerated(desiredClass);
      case kFormIdentifier:
        return readNumber("PutIdentifier", "GetIdentifier", sPSActionReference->GetIdentifier,
                          desiredClass);
      case kFormProperty:
        return readProperty(desiredClass);
      case kFormOffset:
        return readNumber("PutOffset", "GetOffset", sPSActionReference->GetOffset, desiredClass);
      case kFormIndex:
        return readNumber("PutIndex", "GetIndex", sPSActionReference->GetIndex, desiredClass);
      case kFormName:
        return forms_.putName(part_, desiredClass);
      default:
        return forms_.writeError("formID", form);
    }
  }

  void readEnumerated(DescriptorClassID desiredClass) {
    DescriptorEnumTypeID type = 0;
    DescriptorEnumID value = 0;
    const OSErr error = sPSActionReference->GetEnumerated(part_, &type, &value);
    if (succeeds("GetEnumerated", error)) forms_.putEnumerated(desiredClass, type, value);
  }

  void readProperty(DescriptorClassID desiredClass) {
    DescriptorKeyID key = 0;
    const OSErr error = sPSActionReference->GetProperty(part_, &key);
    if (succeeds("GetProperty", error)) forms_.putProperty(desiredClass, key);
  }

  template <class Number>
  void readNumber(std::string_view procedure, std::string_view call,
                  OSErr (*get)(PIActionReference, Number*), DescriptorClassID desiredClass) {
    Number number = 0;
    if (succeeds(call, get(part_, &number))) forms_.putNumber(procedure, desiredClass, number);
  }

  bool succeeds(std::string_view call, OSErr error) {
    if (error != 0) forms_.writeError(call, error);
    return error == 0;
  }

  PIActionReference part_;
  Forms& forms_;
};

/// The part that contains `part`; empty at the end of the chain or if the call fails.
inline ActionReference containerOf(PIActionReference part) {
  ActionReference container;
  if (sPSActionReference->GetContainer(part, container.out()) != 0) return {};
  return container;
}

/// Hands the forms of `reference` to `forms`, its own form first and then those of its containers.
/// REQUIRES: the action suites are held, `reference` is not null. [main-thread]
template <class Forms>
void walkReference(PIActionReference reference, Forms& forms) {
  PartReader<Forms>(reference, forms).read();
  for (ActionReference part = containerOf(reference); part; part = containerOf(part.get())) {
    PartReader<Forms>(part.get(), forms).read();
  }
}
