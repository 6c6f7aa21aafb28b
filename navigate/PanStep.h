// How far one pan sample moves: the square of its deflection, with the deflection's sign.
// [any-thread]
#pragma once

/// Where the step along either axis starts, in pixels.
inline constexpr short kPanOrigin = 5;

/// Where the step of a deflection of `counts` device counts (-32768 to 32767) ends, in pixels:
/// counts * |counts| / 250 + kPanOrigin, truncated toward zero, of which the low 16 bits are kept.
short panStepEnd(int counts);
