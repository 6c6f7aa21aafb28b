// Screen geometry in 16-bit pixels, from the platform's floating-point coordinates. [any-thread]
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <MacTypes.h>

/// Returns the low 16 bits of the coordinate truncated towards zero; 0 if the truncated coordinate
/// does not fit into 32 bits or the coordinate is NaN.
short pixel(double coordinate);

/// Returns the rectangle in pixels; origin and size are added before the truncation. y is not
/// flipped: `top` holds the smaller y, which is the lower edge on the screen.
Rect pixelRect(const CGRect& rect);

/// Returns `mouse` if it lies in `bounds`, edges included, else the centre of `bounds`.
Point placeInside(const Rect& bounds, Point mouse);

/// Returns the mean of two edges, truncated towards zero.
short middle(short low, short high);
