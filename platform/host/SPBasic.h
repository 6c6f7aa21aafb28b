// The basic suite: through it a plug-in gets and gives back every other suite.
#pragma once

#include <cstddef>

#include "SPErrorCodes.h"

inline constexpr char kSPBasicSuite[] = "SP Basic Suite";
inline constexpr int32 kSPBasicSuiteVersion = 4;

/// All procedures: [main-thread].
struct SPBasicSuite {
  /// Finds the suite `name` at exactly `version` and writes its table to `suite`. Each success is
  /// given back with one ReleaseSuite. An unknown name or version: kSPSuiteNotFoundError.
  SPErr (*AcquireSuite)(const char* name, int32 version, const void** suite);
  SPErr (*ReleaseSuite)(const char* name, int32 version);
  /// Whether two host strings are equal; the only way in which callers and selectors are compared.
  SPBoolean (*IsEqual)(const char* token1, const char* token2);
  SPErr (*AllocateBlock)(std::size_t size, void** block);
  SPErr (*FreeBlock)(void* block);
  SPErr (*ReallocateBlock)(void* block, std::size_t newSize, void** newBlock);
  /// Stands in an empty entry of a procedure table.
  SPErr (*Undefined)();
};
