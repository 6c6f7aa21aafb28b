#include "simulator/scenario/Names.h"

#include <PIActionsPlugIn.h>
#include <SPInterf.h>

namespace simulator {

std::vector<std::string> knownCallers() { return {kSPInterfaceCaller, kPSPhotoshopCaller}; }

std::vector<std::string> knownSelectors(const std::string& caller) {
  if (caller == kSPInterfaceCaller) {
    return {kSPInterfaceAboutSelector, kSPInterfaceStartupSelector, kSPInterfaceShutdownSelector};
  }
  if (caller == kPSPhotoshopCaller) return {kPSDoIt};
  return {};
}

const std::vector<std::string>& knownTools() {
  static const std::vector<std::string> tools = {"artBrushTool",
                                                 "backgroundEraserTool",
                                                 "blurTool",
                                                 "bucketTool",
                                                 "burnInTool",
                                                 "cloneStampTool",
                                                 "colorReplacementBrushTool",
                                                 "dodgeTool",
                                                 "eraserTool",
                                                 "gradientTool",
                                                 "historyBrushTool",
                                                 "lassoTool",
                                                 "magicEraserTool",
                                                 "magicStampTool",
                                                 "magicWandTool",
                                                 "magneticLassoTool",
                                                 "marqueeEllipTool",
                                                 "marqueeRectTool",
                                                 "marqueeSingleColumnTool",
                                                 "marqueeSingleRowTool",
                                                 "paintbrushTool",
                                                 "patternStampTool",
                                                 "pencilTool",
                                                 "polySelTool",
                                                 "quickSelectTool",
                                                 "redEyeTool",
                                                 "saturationTool",
                                                 "sharpenTool",
                                                 "smudgeTool",
                                                 "spotHealingBrushTool"};
  return tools;
}

const std::vector<std::string>& knownLayouts() {
  static const std::vector<std::string> layouts = {
      "com.apple.keylayout.US", "com.apple.keylayout.French", "com.apple.keylayout.German"};
  return layouts;
}

}  // namespace simulator
