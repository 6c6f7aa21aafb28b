// The basic suite, with which a plug-in acquires and releases every other suite.
#pragma once

#include <cstddef>

#include "SPErrorCodes.h"

inline constexpr char kSPBasicSuite[] = "SP Basic Suite";
inline constexpr int32 kSPBasicSuiteVersion = 4;

/// Procedures return 0 or a plug-in manager error unless stated otherwise. [main-thread]
struct SPBasicSuite {
  /// Writes the table of the suite `name` in exactly this `version` to `suite`. Each success needs
  /// one ReleaseSuite. kSPSuiteNotFoundError if the name or version is unknown.
  SPErr (*AcquireSuite)(const char* name, int32 version, const void** suite);
  SPErr (*ReleaseSuite)(const char* name, int32 version);
  /// Non-zero if two host strings are equal. Callers and selectors must be compared with this.
  SPBoolean (*IsEqual)(const char* token1, const char* token2);
  SPErr (*AllocateBlock)(std::size_t size, void** block);
  SPErr (*FreeBlock)(void* block);
  SPErr (*ReallocateBlock)(void* block, std::size_t newSize, void** newBlock);
  /// Fills the unused entries of a procedure table.
  SPErr (*Undefined)();
};
