// The simulated window server: one window with its content view, one screen, the mouse, the input
// stream and the notices of redrawn screen areas. [main-thread]
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

/// Rectangles are in screen coordinates, y growing upward.
struct WindowState {
  CGRect frame = {{100, 50}, {800, 622}};
  CGRect content = {{100, 50}, {800, 600}};
  bool isMain = true;             ///< whether the application names it as its main window
  bool viewsNeedDisplay = false;  ///< some view of it waits to be redrawn
  bool contentNeedsDisplay = false;
  long references = 1;
};

class WindowServer {
 public:
  WindowServer();

  /// The window exists for good; taking it out of `mainWindow` is all that can happen to it.
  WindowState window;
  CGRect screen = {{0, 0}, {1440, 900}};
  bool windowHasScreen = true;
  CGPoint mouse = {500, 350};

  id windowObject() { return &window_; }

  /// Puts a copy of the event into the input stream; the application takes it when it is next idle.
  void post(CGEventTapLocation tap, const SynthesizedEvent& event);

  /// Gives every event in the input stream to the application.
  void deliverInput();

  /// What the application does with synthesized input.
  void setApplication(std::function<void(const SynthesizedEvent&)> application);

  void registerRefresh(CGScreenRefreshCallback callback, void* userInfo);
  void unregisterRefresh(CGScreenRefreshCallback callback, void* userInfo);

  /// Tells the refresh callbacks of redrawn rectangles.
  void refresh(const std::vector<CGRect>& rects);

  /// How often the window was asked to draw at once.
  int displaysForced = 0;

  /// The rectangles that were marked for redrawing in the content view, in order.
  std::vector<CGRect> invalidated;

  /// A misuse line where references to the window were leaked.
  void reportLeaks();

 private:
  using RefreshCallback = std::pair<CGScreenRefreshCallback, void*>;

  objc_class windowClass_, viewClass_, screenClass_, applicationMeta_, applicationClass_,
      eventMeta_, eventClass_;
  objc_object application_, window_, view_, screen_;
  std::deque<SynthesizedEvent> input_;
  std::function<void(const SynthesizedEvent&)> deliver_;
  std::vector<RefreshCallback> refreshCallbacks_;

  friend struct AppKitMethods;
};

/// The window server of the process; it outlives every static object.
WindowServer& theWindowServer();

}  // namespace simulator
