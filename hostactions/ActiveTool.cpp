#include "hostactions/ActiveTool.h"

#include <HostTerms.h>

#include <cstring>

#include "hostactions/ApplicationProperty.h"
#include "hostutil/Truncate.h"
#include "suites/HostObjects.h"
#include "suites/Suites.h"

namespace {

struct Tool {
  const char* name;
  int number;
};

/// `kBrushTools` in BrushSize.cpp is a bit set over these numbers, so they must not change.
constexpr Tool kTools[] = {
    {"paintbrushTool", 29},
    {"cloneStampTool", 30},
    {"patternStampTool", 31},
    {"eraserTool", 32},
    {"historyBrushTool", 33},
    {"artBrushTool", 35},
    {"marqueeRectTool", 36},
    {"marqueeEllipTool", 37},
    {"marqueeSingleRowTool", 38},
    {"marqueeSingleColumnTool", 39},
    {"magneticLassoTool", 40},
    {"bucketTool", 42},
    {"magicStampTool", 44},
    {"spotHealingBrushTool", 45},
    {"colorReplacementBrushTool", 46},
    {"redEyeTool", 47},
    {"magicEraserTool", 48},
    {"pencilTool", 49},
    {"backgroundEraserTool", 50},
    {"gradientTool", 51},
    {"blurTool", 52},
    {"smudgeTool", 53},
    {"sharpenTool", 54},
    {"saturationTool", 55},
    {"dodgeTool", 56},
    {"burnInTool", 57},
    {"lassoTool", 58},
    {"polySelTool", 59},
    {"magicWandTool", 60},
    {"quickSelectTool", 61},
};

constexpr uint32 kToolNameSize = 50;

int toolNumberOf(const char (&name)[kToolNameSize]) {
  for (const Tool& tool : kTools) {
    if (std::strncmp(name, tool.name, kToolNameSize) == 0) return tool.number;
  }
  return kOtherTool;
}

/// Asks for the current tool; `hasTool` reports whether the answer contains it.
int askForTool(ActionReference& reference, ActionDescriptor& result, bool& hasTool) {
  hasTool = false;
  const int error = getApplicationProperty(kKeyTool, reference, result);
  return error != 0 ? error : askForKey(result.get(), kKeyTool, hasTool);
}

int readToolID(const ActionDescriptor& result, DescriptorEnumTypeID& tool) {
  DescriptorEnumID ignoredValue = 0;
  return sPSActionDescriptor->GetEnumerated(result.get(), kKeyTool, &tool, &ignoredValue);
}

}  // namespace

int PlayeventGetActiveTool(int* toolNumber, int* hostToolID) {
  // Freed in the reverse order of declaration: the reference first.
  ActionDescriptor result;
  ActionReference reference;
  bool hasTool;
  int error = askForTool(reference, result, hasTool);
  if (error != 0 || !hasTool) return error;
  DescriptorEnumTypeID tool = 0;
  error = readToolID(result, tool);
  if (error != 0) return error;
  if (hostToolID != nullptr) *hostToolID = static_cast<int>(tool);
  char name[kToolNameSize] = {};
  error = sPSActionControl->TypeIDToStringID(tool, name, kToolNameSize);
  *toolNumber = toolNumberOf(name);
  return error;
}

int PlayeventGetBrushSize(int* size) {
  // Freed in the reverse order of declaration: the reference first.
  ActionDescriptor brush;
  ActionDescriptor toolOptions;
  ActionDescriptor result;
  ActionReference reference;
  bool hasTool;
  int error = askForTool(reference, result, hasTool);
  if (error != 0 || !hasTool) return error;
  DescriptorEnumTypeID ignoredTool = 0;
  DescriptorUnitID ignoredUnit = 0;
  double diameter = 0.0;
  error = readToolID(result, ignoredTool);
  if (error == 0) error = getObject(result, kKeyCurrentToolOptions, toolOptions);
  if (error == 0) error = getObject(toolOptions, kKeyBrushes, brush);
  if (error == 0) {
    error = sPSActionDescriptor->GetUnitFloat(brush.get(), kKeyDiameter, &ignoredUnit, &diameter);
  }
  if (error == 0) *size = truncateToInt32(diameter);
  return error;
}
