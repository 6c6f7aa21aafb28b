// The plug-in's entry point, the About box, and the placeholder for actions.
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

/// The one function that the host calls. `caller` and `selector` are host strings, compared only
/// with the basic suite's `IsEqual`; unknown ones are ignored. `message` is the host's message
/// record (`SPMessageData`, or a record that begins with it).
/// Returns 0, or the parameter error 0x5061726D if anything was thrown; errors that the host
/// returned while an action was played are not reported. Throws nothing. [main-thread]
/// REQUIRES: `message` and its basic suite are not null.
extern "C" int AutoPluginMain(const char* caller, const char* selector, void* message);

/// Placeholder for the About box: writes a note to the system's debugger log. Both arguments are
/// ignored. A program that defines the function itself replaces this one. [main-thread]
void DoAbout(SPPluginRef plugin, int dialogID);

/// Placeholder: does nothing.
void ShowAbout();

/// Placeholder for playing an action from its parameters: not implemented, returns 0.
int Execute(PSActionsPlugInMessage* message);
