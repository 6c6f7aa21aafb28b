// The alias utility suite.
#pragma once

#include "PIGeneral.h"

inline constexpr char kPSAliasSuite[] = "Photoshop Alias Utility Suite";
inline constexpr int32 kPSAliasSuiteVersion = 1;

struct PSAliasSuite {
  /// Makes an alias of a POSIX path; the caller owns it and disposes of it as a regular handle.
  /// On failure `alias` is null.
  SPErr (*MacNewAliasFromCString)(const char* path, AliasHandle* alias);
};
