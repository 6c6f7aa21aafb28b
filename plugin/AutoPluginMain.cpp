#include "plugin/AutoPluginMain.h"

#include <SPInterf.h>

#include "device/MrvDeviceEvents.h"
#include "hostactions/BrushSize.h"
#include "hostactions/QueuedEvent.h"
#include "suites/BasicSuite.h"
#include "suites/Suites.h"

SPPluginRef gPlugInRef = nullptr;
MrvDeviceEvents* gMrvDeviceEvents = nullptr;

namespace {

constexpr int kAboutDialog = 18502;

/// The host's own comparison decides; it may differ from a comparison of bytes.
bool isHostString(const char* text, const char* expected) {
  return sSPBasic->IsEqual(text, expected);
}

void startup() {
  // InitBrushSize ignores the language; the keyboard layout selects the keys.
  char language[] = "en";
  InitBrushSize(language);
  if (gMrvDeviceEvents == nullptr) gMrvDeviceEvents = new MrvDeviceEvents;
}

/// The device connection ends first: its events could otherwise acquire suites again.
void shutdown() {
  delete gMrvDeviceEvents;
  gMrvDeviceEvents = nullptr;
  PIUSuitesRelease();
}

/// The conditions are independent: the host's comparison may match one call with several of them.
void dispatch(const char* caller, const char* selector) {
  if (isHostString(caller, kSPInterfaceCaller)) {
    if (isHostString(selector, kSPInterfaceAboutSelector)) DoAbout(gPlugInRef, kAboutDialog);
    if (isHostString(selector, kSPInterfaceStartupSelector)) startup();
    if (isHostString(selector, kSPInterfaceShutdownSelector)) shutdown();
  }
  if (isHostString(caller, kPSPhotoshopCaller) && isHostString(selector, kPSDoIt)) {
    PlayQueuedEvent();
  }
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int AutoPluginMain(const char* caller,
                                                                     const char* selector,
                                                                     void* message) {
  const auto* data = static_cast<const SPMessageData*>(message);
  sSPBasic = data->basic;
  gPlugInRef = data->self;
  try {
    dispatch(caller, selector);
  } catch (...) {
    return kSPBadParameterError;
  }
  return 0;
}

int Execute(PSActionsPlugInMessage*) { return 0; }
