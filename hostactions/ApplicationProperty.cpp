#include "hostactions/ApplicationProperty.h"

#include <HostTerms.h>

int getApplicationProperty(DescriptorKeyID key, ActionReference& reference,
                           ActionDescriptor& result) {
  int error = sPSActionReference->Make(reference.out());
  if (error == 0) {
    error = sPSActionReference->PutProperty(reference.get(), kClassProperty, key);
  }
  if (error == 0) {
    error = sPSActionReference->PutEnumerated(reference.get(), kClassApplication, kTypeOrdinal,
                                              kEnumTarget);
  }
  if (error == 0) error = sPSActionControl->Get(result.out(), reference.get());
  return error;
}

int askForKey(const ActionDescriptor& descriptor, DescriptorKeyID key, bool& present) {
  Boolean answer = 0;
  const int error = sPSActionDescriptor->HasKey(descriptor.get(), key, &answer);
  present = answer != 0;
  return error;
}

bool hasKey(const ActionDescriptor& descriptor, DescriptorKeyID key) {
  bool present = false;
  return askForKey(descriptor, key, present) == 0 && present;
}
