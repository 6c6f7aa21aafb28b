// Screen geometry in 16-bit pixels, made from the platform's floating-point coordinates.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <MacTypes.h>

/// The coordinate truncated toward zero, of which the low 16 bits are kept; 0 where it does not fit
/// into 32 bits or is no number.
short pixel(double coordinate);

/// The rectangle in pixels, each sum of an origin and a size made before it is truncated. y is not
/// flipped: `top` holds the smaller y, the lower edge on the screen.
Rect pixelRect(const CGRect& rect);

/// Where a wheel tick goes: `mouse` where it lies in `bounds` (edges included), else the centre.
Point placeInside(const Rect& bounds, Point mouse);

/// The middle between two edges, truncated toward zero.
short middle(short low, short high);
