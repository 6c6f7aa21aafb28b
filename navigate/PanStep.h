// The step of one pan sample: the square of its deflection, with the deflection's sign.
// [any-thread]
#pragma once

/// The start of a step along either axis, in pixels.
inline constexpr short kPanOrigin = 5;

/// Returns the end, in pixels, of the step for a deflection of `counts` device counts (-32768 to
/// 32767): the low 16 bits of counts * |counts| / 250 + kPanOrigin, truncated towards zero.
short panStepEnd(int counts);
