// The simulated window server: the host's window with its content view, one screen, the mouse, the
// input stream and the callbacks for redrawn screen areas. [main-thread]
#pragma once

#include <Carbon/Carbon.h>
#include <objc/objc.h>

#include <deque>
#include <functional>
#include <utility>
#include <vector>

#include "simulator/base/Log.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/ObjcRuntime.h"

namespace simulator {

/// A window's state. Rectangles are in screen coordinates in points, y growing upward.
struct WindowState {
  CGRect frame = {{100, 50}, {800, 622}};
  CGRect content = {{100, 50}, {800, 600}};
  bool isMain = true;                ///< whether the application returns it as its main window
  bool viewsNeedDisplay = false;     ///< whether any view waits to be redrawn
  bool contentNeedsDisplay = false;  ///< whether the content view waits to be redrawn
  bool isOpen = true;                ///< while it is, one reference is the host's
  long references = 1;               ///< the last one that is given back frees the window
};

class WindowServer {
 public:
  WindowServer();

  /// The window that was opened last, which may have been closed; at the start one is open.
  /// `mainWindow` returns null while `isMain` is false.
  WindowState& window() { return windows_.back().state; }
  const WindowState& window() const { return windows_.back().state; }
  CGRect screen = {{0, 0}, {1440, 900}};
  bool windowHasScreen = true;
  CGPoint mouse = {500, 350};  ///< in screen coordinates, y growing upward

  /// The object of that window.
  id windowObject() { return &windows_.back().object; }

  /// Opens a new window and makes it the main window. REQUIRES: the last one has been closed.
  void openWindow();

  /// Closes the window: it is not the main window any more, and the host gives its reference back.
  /// The window is freed, and its content view with it, once no reference is left. A closed window
  /// stays as it is.
  void closeWindow();

  /// Appends a copy of the event to the input stream, from which `deliverInput` takes it.
  void post(CGEventTapLocation tap, const SynthesizedEvent& event);

  /// Passes each event in the input stream to the application, including any posted meanwhile.
  void deliverInput();

  /// Sets the function that receives synthesized input.
  void setApplication(std::function<void(const SynthesizedEvent&)> application);

  /// The rectangle in global display coordinates, in which the platform reports what was redrawn: y
  /// grows downward from the screen's top.
  CGRect onDisplay(const CGRect& rect) const;

  void registerRefresh(CGScreenRefreshCallback callback, void* userInfo);
  void unregisterRefresh(CGScreenRefreshCallback callback, void* userInfo);

  /// Calls the refresh callbacks with the redrawn rectangles as they are given. Callbacks
  /// registered or unregistered meanwhile take effect with the next call.
  void refresh(const std::vector<CGRect>& rects);

  /// How often `displayIfNeeded` was called.
  int displaysForced = 0;

  /// The rectangles passed to the content view's `setNeedsDisplayInRect:`, in order.
  std::vector<CGRect> invalidated;

  /// Reports a misuse if references to windows were not released. One may be kept to the end: a
  /// plug-in that remembers a window retains it.
  void reportLeaks();

 private:
  struct Window;
  /// The object of a window, or of its content view.
  struct WindowPart : objc_object {
    Window* owner;
  };
  struct Window {
    WindowState state;
    WindowPart object;
    WindowPart view;
  };

  static void giveBack(Window& window);

  using RefreshCallback = std::pair<CGScreenRefreshCallback, void*>;

  objc_class windowClass_, viewClass_, screenClass_, applicationMeta_, applicationClass_,
      eventMeta_, eventClass_;
  objc_object application_, screen_;
  std::deque<Window> windows_;  ///< in the order in which they were opened; freed ones stay
  std::deque<SynthesizedEvent> input_;
  std::function<void(const SynthesizedEvent&)> deliver_;
  std::vector<RefreshCallback> refreshCallbacks_;

  friend struct AppKitMethods;
};

/// The window server of this process. Never destroyed, so static destructors may use it.
WindowServer& theWindowServer();

}  // namespace simulator
