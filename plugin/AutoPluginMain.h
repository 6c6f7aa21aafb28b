// The plug-in's entry point and the few routines that live beside it.
#pragma once

#include <PIActionsPlugIn.h>
#include <PIGeneral.h>
#include <SPBasic.h>
#include <SPTypes.h>

#include <cstddef>

#include "plugin/BasicSuite.h"

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

/// Where the plug-in would tell which version of the host it needs (`version`, length-prefixed
/// text). It shows nothing and returns 0, so a missing callback raises no alert.
int ShowVersionAlert(const unsigned char* version);

/// Where an action's parameters would be acted on: does nothing and returns 0.
int Execute(PSActionsPlugInMessage* message);

/// Whether the process runs on the processor that it was built for. True also where the system
/// cannot tell. [any-thread]
bool IsRunningNatively();

/// Whether the host asks for a dialog to be shown. REQUIRES: `parameters` is not null.
bool HostPlayDialog(const PIDescriptorParameters* parameters);

/// A plug-in's globals block, kept in a host handle of `size` bytes: at least two pointers, the
/// first of which becomes `result`, the second `parameterBlock`. With `*handle` present it is
/// locked and stamped; without, a new one is made, locked, stamped, given to `initialise` and
/// stored in
/// `*handle`. `*result` becomes 0. Null where `procs` are not usable, or the new handle or the lock
/// fails; a new handle that cannot be locked is disposed of. [main-thread]
void* AllocateGlobals(short* result, void* parameterBlock, HandleProcs* procs, std::size_t size,
                      Handle* handle, void (*initialise)(void*));
