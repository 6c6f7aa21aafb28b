// The host's main window and the mouse. [main-thread]
//
// Coordinates are screen coordinates in 16-bit pixels (ScreenGeometry.h), with y growing upward; a
// rectangle's `top` holds the smaller y. If there is no main window, or a given window is null,
// predicates return false, rectangles are all zero, and calls that act on the window do nothing.
#pragma once

#include <Carbon/Carbon.h>
#include <objc/objc.h>

/// Returns the host's main window, null if there is none. The caller gets no reference.
id getMainPhotoshopWindow();

/// Returns whether a view of the main window is waiting to be redrawn.
bool isPhotoshopWindowUpdatePending();

/// Makes the main window draw the views that are waiting to be redrawn.
void flushPhotoshopWindow();

/// Writes the content rectangle of the main window to `*bounds`.
void getMainPhotoshopWindowBounds(Rect* bounds);

/// Returns the main window, which takes the place of the tool bar's window. `windowID` is ignored.
id mrvGetToolbarWindow(UInt32 windowID);

/// Returns whether the window's content view is waiting to be redrawn.
bool mrvIsWindowUpdatePending(id window);

/// Marks a rectangle, in the coordinates of the window's content view, for redrawing, and releases
/// one reference to the window, which the caller must have retained. Returns 0.
int mrvInvalWindowRect(id window, const Rect* rect);

/// Writes the window's frame, including the title bar, to `*bounds`. `region` is ignored.
void mrvGetWindowBounds(id window, UInt16 region, Rect* bounds);

/// Writes the mouse's position to `*location`.
void getCurrentMouseLocation(Point* location);

/// Converts a point with y upward to y downward from the top of the main window's screen. The
/// screen's height counts as 0 if the window has no screen or there is no main window.
void convertNSMousePtToCG(Point* location);
