// Imports of every kind: functions, variables, and weak imports that are missing.
#include <cmath>
#include <cstdarg>
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

static int formatted(char* buffer, unsigned long size, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(buffer, size, format, arguments);
  va_end(arguments);
  return length;
}

EXPORT int formatsList(char* buffer, unsigned long size) {
  return formatted(buffer, size, "%d %.1f %s", 1, 2.5, "xyz");
}

extern "C" int sscanf(const char* text, const char* format, ...);

EXPORT int scans() {
  int tens = 0, ones = 0;
  return sscanf("4 2", "%d %d", &tens, &ones) == 2 ? 10 * tens + ones : -1;
}

EXPORT int printsToStandardOutput() { return std::printf("from the module %d\n", 3); }

// The compiler replaces the loop by a call of its pattern helper.
EXPORT void fillsWithPattern(double* numbers, int count) {
  for (int i = 0; i < count; ++i) numbers[i] = 1.25;
}

EXPORT void clears(char* block, unsigned long size) { std::memset(block, 0, size); }
