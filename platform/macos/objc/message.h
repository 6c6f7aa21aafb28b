// Sending messages. Callers cast both functions to the type of the method. Each method determines
// on which threads it may be called.
#pragma once

#include <objc/objc.h>

extern "C" {

/// Sends a message whose result is returned in registers. Returns 0 if the receiver is null.
void objc_msgSend();

/// Sends a message whose result is written to memory, to which a hidden first argument points.
/// Leaves that memory unchanged if the receiver is null.
void objc_msgSend_stret();
}
