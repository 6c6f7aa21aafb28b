// Imports of every kind: functions, variables, and weak imports that are missing.
#include <cmath>
#include <cstdio>
#include <cstring>

#include "TestHost.h"

extern "C" {
__attribute__((weak_import)) int absentFunction();
__attribute__((weak_import)) extern int absentVariable;
}

EXPORT bool seesAbsentFramework() {
  return &absentFunction != nullptr || &absentVariable != nullptr;
}

EXPORT int formats(char* buffer, unsigned long size) {
  return std::snprintf(buffer, size, "%d %s %.3f %lld", 7, "text", 2.5, -9000000000LL);
}

EXPORT int printsToStandardOutput() { return std::printf("from the module %d\n", 3); }

// The compiler replaces the loop by a call of its pattern helper.
EXPORT void fillsWithPattern(double* numbers, int count) {
  for (int i = 0; i < count; ++i) numbers[i] = 1.25;
}

EXPORT void clears(char* block, unsigned long size) { std::memset(block, 0, size); }
