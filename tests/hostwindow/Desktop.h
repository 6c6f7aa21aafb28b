// A desktop with the host's window: GNUstep's on an X server, or the simulated Mac's. The tests in
// HostWindowDesktopTest.cpp run on both.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <objc/objc.h>

#include <memory>

namespace testing_support {

/// What a test does to the desktop, and what the desktop itself says about its window. Rectangles
/// are in screen coordinates, y upward. The window is the one that was opened last. [main-thread]
class Desktop {
 public:
  virtual ~Desktop() = default;

  virtual double screenHeight() = 0;

  /// Opens a window with a title bar and this content rectangle, makes it the main window and draws
  /// it. REQUIRES: no window is open; the sides are whole numbers.
  virtual id openWindow(const CGRect& content) = 0;

  /// Takes the window off the screen, and puts it back as the main window.
  virtual void hideWindow() = 0;
  virtual void showWindow() = 0;

  /// Closes the window; the application gives back its reference.
  virtual void closeWindow() = 0;

  virtual CGRect frame() = 0;
  virtual CGRect content() = 0;
  virtual long references(id window) = 0;

  /// Lets the application's event loop do what is waiting.
  virtual void turnLoop() = 0;

  /// Whether a turn of the loop draws what is marked for drawing.
  virtual bool turnDraws() = 0;

  /// Moves the mouse to a place with y downward from the screen's top.
  virtual void moveMouse(int x, int y) = 0;
};

/// The desktop of this program; call it once.
std::unique_ptr<Desktop> openDesktop();

}  // namespace testing_support
