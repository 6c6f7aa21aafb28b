// The UI-hooks suite: the host's event processing, display of pixels and progress bar.
#pragma once

#include "PIGeneral.h"

inline constexpr char kPSUIHooksSuite[] = "Photoshop UIHooks Suite for Plug-ins";
inline constexpr int32 kPSUIHooksSuiteVersion1 = 1;

struct PSUIHooksSuite1 {
  ProcessEventProc processEvent;
  DisplayPixelsProc displayPixels;
  ProgressProc progressBar;
  TestAbortProc testAbort;
  SPErr (*MainAppWindow)(void* window);
  SPErr (*SetCursor)(int32 cursor);
  SPErr (*TickCount)(uint32* count);
  SPErr (*GetPluginName)(SPPluginRef plugin, ASZString* name);
};
