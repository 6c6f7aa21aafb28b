// The string suite: reference-counted strings of the host.
#pragma once

#include <cstddef>

#include "ASTypes.h"

inline constexpr char kASZStringSuite[] = "AS ZString Suite";
inline constexpr int32 kASZStringSuiteVersion1 = 1;
inline constexpr int32 kASZStringSuiteVersion2 = 2;

using ASZString = struct ASZStringRecord*;

/// The Make procedures and Copy return a string with one reference, which the caller gives up with
/// Release. Lengths are in code units or bytes and do not count the terminator; the size of a
/// destination does. Errors: 0, or a host error code. [main-thread]
struct ASZStringSuite {
  ASErr (*MakeFromUnicode)(ASUnicode* source, std::size_t byteCount, ASZString* newString);
  ASErr (*MakeFromCString)(const char* source, std::size_t byteCount, ASZString* newString);
  ASErr (*MakeFromPascalString)(const unsigned char* source, std::size_t byteCount,
                                ASZString* newString);
  ASErr (*MakeRomanizationOfInteger)(ASInt32 value, ASZString* newString);
  ASErr (*MakeRomanizationOfFixed)(ASInt32 value, ASInt16 places, ASBoolean trim,
                                   ASBoolean isSigned, ASZString* newString);
  ASErr (*MakeRomanizationOfDouble)(double value, ASZString* newString);
  ASZString (*GetEmpty)();
  ASErr (*Copy)(ASZString source, ASZString* copy);
  ASErr (*Replace)(ASZString string, ASUInt32 index, ASZString replacement);
  ASErr (*TrimEllipsis)(ASZString string);
  ASErr (*TrimSpaces)(ASZString string);
  ASErr (*RemoveAccelerators)(ASZString string);
  ASErr (*AddRef)(ASZString string);
  ASErr (*Release)(ASZString string);
  ASBoolean (*IsAllWhiteSpace)(ASZString string);
  ASBoolean (*IsEmpty)(ASZString string);
  ASBoolean (*WillReplace)(ASZString string, ASUInt32 index);
  ASUInt32 (*LengthAsUnicodeCString)(ASZString string);
  ASErr (*AsUnicodeCString)(ASZString string, ASUnicode* destination, ASUInt32 size,
                            ASBoolean checkSize);
  ASUInt32 (*LengthAsCString)(ASZString string);
  ASErr (*AsCString)(ASZString string, char* destination, ASUInt32 size, ASBoolean checkSize);
  ASUInt32 (*LengthAsPascalString)(ASZString string);
  ASErr (*AsPascalString)(ASZString string, unsigned char* destination, ASUInt32 size,
                          ASBoolean checkSize);
};

/// The second version's table. No code calls through it, so its members are not declared.
struct ASZStringSuite2;
