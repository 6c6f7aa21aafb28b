#include "hostactions/ApplicationProperty.h"

#include "hostactions/ReferenceParts.h"
#include "suites/HostObjects.h"
#include "suites/Suites.h"

int getApplicationProperty(DescriptorKeyID key, ActionReference& reference,
                           ActionDescriptor& result) {
  return getAnswer(reference, result, propertyPart(kClassProperty, key),
                   currentPart(kClassApplication));
}

int askForKey(PIActionDescriptor descriptor, DescriptorKeyID key, bool& present) {
  Boolean answer = 0;
  const int error = sPSActionDescriptor->HasKey(descriptor, key, &answer);
  present = answer != 0;
  return error;
}

bool hasKey(const ActionDescriptor& descriptor, DescriptorKeyID key) {
  bool present = false;
  return askForKey(descriptor.get(), key, present) == 0 && present;
}

int getObject(const ActionDescriptor& descriptor, DescriptorKeyID key, ActionDescriptor& object) {
  DescriptorClassID ignoredClass = 0;
  return sPSActionDescriptor->GetObject(descriptor.get(), key, &ignoredClass, object.out());
}

int playSilently(ActionDescriptor& result, DescriptorEventID event,
                 const ActionDescriptor& descriptor) {
  return sPSActionControl->Play(result.out(), event, descriptor.get(), plugInDialogSilent);
}
