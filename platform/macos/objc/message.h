// Sending messages. Both functions are called through a pointer of the method's own type.
#pragma once

#include <objc/objc.h>

extern "C" {

/// Sends a message of which the result comes back in registers. A null receiver answers 0.
void objc_msgSend();

/// Sends a message of which the result goes to memory that a hidden first argument points to.
/// A null receiver leaves that memory as it was.
void objc_msgSend_stret();
}
