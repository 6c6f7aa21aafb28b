// The host's basic types.
#pragma once

#include <Carbon/Carbon.h>

#include <cstdint>

#include "platform/FourCharCode.h"

using int8 = std::int8_t;
using int16 = std::int16_t;
using int32 = std::int32_t;
using int64 = std::int64_t;
using uint8 = std::uint8_t;
using uint16 = std::uint16_t;
using uint32 = std::uint32_t;
using uint64 = std::uint64_t;
using real32 = float;
using real64 = double;

/// A four-character code of the host: signatures, keys, kinds of resources.
using PIType = std::uint32_t;

/// Image coordinates in pixels, y growing downward.
struct VPoint {
  int32 v;
  int32 h;
};

struct VRect {
  int32 top;
  int32 left;
  int32 bottom;
  int32 right;
};

/// The host's signature; also the creator code of the application and its documents.
inline constexpr PIType kPhotoshopSignature = fourCharCode("8BIM");
