// Sending messages. Callers cast the functions to the type of the method. Each method determines
// on which threads it may be called.
#pragma once

#include <objc/objc.h>

extern "C" {

/// Sends a message whose result is returned in registers; on arm64, whatever the result. Returns 0
/// in registers if the receiver is null, and leaves a result in memory unchanged.
void objc_msgSend();

#if !defined(__aarch64__)
/// Sends a message whose result is written to memory, to which a hidden first argument points.
/// Leaves that memory unchanged if the receiver is null. Not on arm64.
void objc_msgSend_stret();
#endif
}
