// The host's tools that have numbers of their own, with these.
#pragma once

#include <utility>

namespace testing_support {

inline constexpr std::pair<const char*, int> kNumberedTools[] = {{"paintbrushTool", 29},
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
                                                                 {"quickSelectTool", 61}};

}  // namespace testing_support
