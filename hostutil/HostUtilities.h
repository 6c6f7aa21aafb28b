// Queries to host and platform, the version alert, and the globals block.
#pragma once

#include <PIGeneral.h>

#include <cstddef>

/// Placeholder for an alert that names the host version needed (`version`, length-prefixed text):
/// shows nothing and returns 0. A program that defines the function itself replaces this one.
/// [main-thread]
int ShowVersionAlert(const unsigned char* version);

/// True if the process runs on the processor that it was built for, false if it is translated. Also
/// true if the system does not report which. [any-thread]
bool IsRunningNatively();

/// True if the host asks for a dialog. REQUIRES: `parameters` is not null. [any-thread]
bool HostPlayDialog(const PIDescriptorParameters* parameters);

/// Locks a plug-in's globals block and returns it. The block lies in a host handle of `size` bytes
/// and begins with two pointers, which are set to `result` and `parameterBlock`; `*result` is set
/// to 0.
///
/// If `*handle` is null, a new handle is made, its block is locked, set up and passed to
/// `initialise`, and the handle is stored in `*handle`. Returns null if `procs` is unavailable,
/// `size` exceeds 31 bits, or the handle cannot be made or locked; a new handle that cannot be
/// locked is disposed of.
/// REQUIRES: `size` is at least that of two pointers; of the arguments, only `procs` may be null.
/// [main-thread]
void* AllocateGlobals(short* result, void* parameterBlock, HandleProcs* procs, std::size_t size,
                      Handle* handle, void (*initialise)(void*));
