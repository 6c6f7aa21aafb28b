// Functions that the loader's tests provide to the modules that they load.
#pragma once

extern "C" {

/// Appends the number to the test's record.
void testRecord(int value);

/// Throws the number, as an int, from host code.
void testThrow(int value);

/// Calls the function from host code.
void testCall(void (*function)());
}

#define EXPORT extern "C" __attribute__((visibility("default")))
