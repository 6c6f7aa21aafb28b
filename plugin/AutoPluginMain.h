// The plug-in's entry point and the few routines that live beside it.
#pragma once

#include <PIActionsPlugIn.h>
#include <PIGeneral.h>
#include <SPBasic.h>
#include <SPTypes.h>

class MrvDeviceEvents;

/// The host's reference for this plug-in; every call of the entry point refreshes it.
extern SPPluginRef gPlugInRef;

/// The device connection, null while it is down.
extern MrvDeviceEvents* gMrvDeviceEvents;

/// The one function that the host calls. `caller` and `selector` are host strings, compared by the
/// basic suite alone; `message` is the host's message record (`SPMessageData`, or a record that
/// begins with it) and must not be null. Unknown callers and selectors are ignored.
/// Returns 0, or the parameter error 0x5061726D for any failure: nothing is thrown to the host.
/// [main-thread]
extern "C" int AutoPluginMain(const char* caller, const char* selector, void* message);

/// Writes a note to the system's debugger log and shows nothing. [main-thread]
void DoAbout(SPPluginRef plugin, int dialogID);

/// Shows nothing.
void ShowAbout();

/// Placeholder for acting on an action's parameters: not implemented, returns 0.
int Execute(PSActionsPlugInMessage* message);
