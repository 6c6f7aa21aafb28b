// Small questions to host and platform, the version alert, and the globals block.
#pragma once

#include <PIGeneral.h>

#include <cstddef>

/// Placeholder for an alert that says which version of the host is needed (`version`,
/// length-prefixed text): shows nothing and returns 0. A program that defines the function itself
/// replaces this one. [main-thread]
int ShowVersionAlert(const unsigned char* version);

/// True if the process runs on the processor that it was built for, false if it is translated; true
/// also if the system does not know. [any-thread]
bool IsRunningNatively();

/// True if the host asks for a dialog. REQUIRES: `parameters` is not null. [any-thread]
bool HostPlayDialog(const PIDescriptorParameters* parameters);

/// Prepares a plug-in's globals block, which a host handle of `size` bytes holds. The block begins
/// with two pointers, which become `result` and `parameterBlock`; `*result` becomes 0.
///
/// If `*handle` is not null, that handle is locked and its block stamped. Otherwise a new handle is
/// made, locked, stamped, passed to `initialise`, and stored in `*handle`. Returns the block, or
/// null if `procs` cannot be used, or the handle cannot be made or locked; a new handle that cannot
/// be locked is disposed of. REQUIRES: `size` is at least that of two pointers; no other pointer
/// but `procs` is null. [main-thread]
void* AllocateGlobals(short* result, void* parameterBlock, HandleProcs* procs, std::size_t size,
                      Handle* handle, void (*initialise)(void*));
