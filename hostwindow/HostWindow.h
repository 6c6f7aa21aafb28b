// The host's main window, the mouse, and what the system tells of both. [main-thread]
//
// Coordinates are the screen's, in pixels, with y growing upward; a rectangle's `top` holds the
// smaller y. Where there is no main window, questions answer false and rectangles are all zero.
#pragma once

#include <Carbon/Carbon.h>
#include <objc/objc.h>

/// The host's main window, null where it has none.
id getMainPhotoshopWindow();

/// Whether the main window waits to be redrawn.
bool isPhotoshopWindowUpdatePending();

/// Has the main window draw what waits to be redrawn.
void flushPhotoshopWindow();

/// The content rectangle of the main window.
void getMainPhotoshopWindowBounds(Rect* bounds);

/// The window that stands for the tool bar: the main window, whatever `windowID` is.
id mrvGetToolbarWindow(UInt32 windowID);

/// Whether the window's content view waits to be redrawn.
bool mrvIsWindowUpdatePending(id window);

/// Marks a rectangle of the window's content view for redrawing and takes one reference to the
/// window over from the caller. Returns 0.
int mrvInvalWindowRect(id window, const Rect* rect);

/// The window's frame, title bar included.
void mrvGetWindowBounds(id window, UInt16 region, Rect* bounds);

/// Where the mouse is.
void getCurrentMouseLocation(Point* location);

/// Turns a point with y upward into one with y downward from the top of the main window's screen;
/// with no screen the height is 0.
void convertNSMousePtToCG(Point* location);
