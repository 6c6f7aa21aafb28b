// The alias utility suite.
#pragma once

#include "PIGeneral.h"

inline constexpr char kPSAliasSuite[] = "Photoshop Alias Utility Suite";
inline constexpr int32 kPSAliasSuiteVersion = 1;

struct PSAliasSuite {
  /// Makes an alias of a POSIX path. The caller disposes of it as a regular handle. On failure,
  /// returns an error and sets `alias` to null. [main-thread]
  SPErr (*MacNewAliasFromCString)(const char* path, AliasHandle* alias);
};
