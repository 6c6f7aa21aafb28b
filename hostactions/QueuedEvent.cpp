#include "hostactions/QueuedEvent.h"

#include "hostactions/ApplicationProperty.h"
#include "hostactions/BrushSize.h"
#include "hostactions/PsUIBoss.h"
#include "hostactions/ReferenceParts.h"
#include "suites/HostObjects.h"
#include "suites/Suites.h"

int gPlayFunction = kPlayNothing;
double gDoubleValue = 0.0;
long long gActiveTool = 0;

namespace {

constexpr double kSmallestDiameter = 1.0;
constexpr double kLargestDiameter = 2500.0;

int setBrushProperty(const char* stringID, DescriptorUnitID unit) {
  // The key is only read.
  return PlayeventDynamicSetProperty(const_cast<char*>(stringID), unit, gDoubleValue);
}

int setDiameterAndSelect() {
  const int setError = setBrushProperty("masterDiameter", kUnitPixels);
  return setError | PlayeventSelectBrush();
}

int playRequest() {
  switch (gPlayFunction) {
    case kPlayMasterDiameter:
      return setDiameterAndSelect();
    case kPlayHardness:
      return setBrushProperty("hardness", kUnitPercent);
    case kPlaySpacing:
      return setBrushProperty("spacing", kUnitPercent);
    case kPlayNewBrushSize:
      SetNewBrushSize();
      return 0;
    default:
      return 0;
  }
}

/// Creates an event's descriptor whose target is a reference made of `part`.
template <class Part>
int makeEvent(ActionDescriptor& event, ActionReference& target, const Part& part) {
  int error = sPSActionDescriptor->Make(event.out());
  if (error == 0) error = makeReference(target, part);
  if (error == 0) error = sPSActionDescriptor->PutReference(event.get(), kKeyTarget, target.get());
  return error;
}

/// Creates a brush's descriptor with one property.
int makeBrush(ActionDescriptor& brush, const char* stringID, DescriptorUnitID unit, double value) {
  DescriptorTypeID property = 0;
  int error = sPSActionDescriptor->Make(brush.out());
  if (error == 0) error = sPSActionControl->StringIDToTypeID(stringID, &property);
  if (error == 0) error = sPSActionDescriptor->PutUnitFloat(brush.get(), property, unit, value);
  return error;
}

}  // namespace

int PlayQueuedEvent() {
  if (PsUIBoss::Instance().MouseIsDown()) return 0;
  const int error = playRequest();
  gPlayFunction = kPlayNothing;
  return error;
}

int PlayeventDynamicSetMasterDiameter(double diameter, int hostToolID) {
  if (diameter < kSmallestDiameter) diameter = kSmallestDiameter;
  if (diameter > kLargestDiameter) diameter = kLargestDiameter;
  gDoubleValue = diameter;
  gActiveTool = hostToolID;
  gPlayFunction = kPlayMasterDiameter;
  return 0;
}

void PlayeventWinSetMasterDiameter() { gPlayFunction = kPlayNewBrushSize; }

bool IsPlayEventBusy() { return gPlayFunction != kPlayNothing; }

int PlayeventDynamicSetProperty(char* key, unsigned long unitID, double value) {
  // Freed in the reverse order of declaration: the result first.
  ActionDescriptor brush;
  ActionReference brushReference;
  ActionDescriptor event;
  ActionDescriptor result;
  int error = makeEvent(event, brushReference, currentPart(kClassBrush));
  if (error == 0) error = makeBrush(brush, key, static_cast<DescriptorUnitID>(unitID), value);
  if (error == 0) {
    error = sPSActionDescriptor->PutObject(event.get(), kKeyTo, kClassBrush, brush.get());
  }
  if (error == 0) error = playSilently(result, kEventSet, event);
  return error;
}

int PlayeventSelectBrush() {
  if (gActiveTool == 0) return 0;
  // Freed in the reverse order of declaration: the result first.
  ActionReference tool;
  ActionDescriptor event;
  ActionDescriptor result;
  int error = makeEvent(event, tool, classPart(static_cast<DescriptorClassID>(gActiveTool)));
  if (error == 0) error = playSilently(result, kEventSelect, event);
  return error;
}
