// What the loader's tests offer to the modules that they load.
#pragma once

extern "C" {

/// Appends the number to the test's record.
void testRecord(int value);

/// Throws the number, as an int, from this system's own code.
void testThrow(int value);

/// Calls back from this system's own code.
void testCall(void (*function)());
}

#define EXPORT extern "C" __attribute__((visibility("default")))
