// View navigation: each sample of device motion changes the brush, zooms or pans.
#pragma once

#include <Carbon/Carbon.h>

#include <cstdint>

/// The wheel of a tick. Every value other than kVerticalWheel selects the horizontal wheel.
enum : UInt16 { kHorizontalWheel = 0, kVerticalWheel = 1 };

/// The plug-in's one navigator. Zoom and pan accumulate small motions and then post one tick of a
/// synthesized scroll wheel over the document. Samples are dropped from a tick until the host has
/// redrawn. [main-thread]
class Navigate2D {
 public:
  /// Returns the one navigator, created by the first call. Throws what `getZoomWithScrollWheel`
  /// throws; the next call then tries again. [any-thread]
  static Navigate2D& Instance();

  /// Reads the host's preference, shortens the suppression of local input after synthesized events
  /// to 0.1 s, and registers for screen refreshes and device events.
  /// REQUIRES: the object's storage is zeroed; `m_refreshWait` and `m_mouseDownHandlerRef` are not
  /// initialised.
  Navigate2D();

  /// Unregisters from screen refreshes. The event handlers stay installed: the object is destroyed
  /// when the process ends.
  ~Navigate2D();

  Navigate2D(const Navigate2D&) = delete;
  Navigate2D& operator=(const Navigate2D&) = delete;

  /// Installs `deviceHandler`. If the platform refuses the installation, `m_deviceHandlerRef` keeps
  /// its value.
  void installDeviceHandler();

  /// Takes one zoom sample in device counts along z; positive zooms in. Dropped until the host has
  /// redrawn after a tick.
  void ZoomEvent(short z);

  /// Takes one pan sample in negated device counts. Motion installs the click filter, a sample at
  /// rest (0, 0) removes it; for the pan itself the sample is dropped until the host has redrawn
  /// after a tick.
  void PanEvent(short dx, short dy);

  /// Adds the low 16 bits of `delta`, in device counts, to a 16-bit accumulator that wraps. From 11
  /// counts either way it posts one zoom tick of one pixel and starts again from 0. Ignored if
  /// there is no main window.
  void SimulateScrollWheelZoom(int delta);

  /// Turns a pan sample (-32768 to 32767 in each direction) into a step along its larger axis,
  /// vertical if both are equal. Ignored if there is no main window.
  void SimulateScrollbarPan(int dx, int dy);

  /// Adds the horizontal displacement from `end` to `start` in pixels, or the vertical one if the
  /// horizontal one is 0, to a 16-bit accumulator that wraps. From 6 pixels either way it posts one
  /// pan tick of eight pixels and starts again from 0. `window` is ignored.
  void SimulateScrollWheelPanEvent(WindowRef window, Point start, Point end);

  /// Posts one tick of `delta` pixels of the wheel `axis` (kHorizontalWheel or kVerticalWheel) at
  /// `where` (y upward). The modifier keys `cmdKey` and `optionKey`, if set in `modifiers`, are
  /// pressed before the tick and released after it; other modifiers are ignored. `window` is
  /// ignored. An event that cannot be created is skipped. Returns 0.
  int SimulateWheelMovedEvent(WindowRef window, UInt16 axis, SInt32 delta, Point where,
                              UInt32 modifiers);

  /// Placeholder: does nothing and returns 0.
  int SimulateMouseDragEvent(WindowRef window, Point start, Point end);

  /// Placeholder: leaves `*control` unchanged and returns 0.
  int GetSbarControl(WindowRef window, SInt32 selector, ControlRef* control);

  /// Installs the click filter `mouseDownHandler` unless it is installed.
  void InstallMouseDownHandler();

  /// Removes the click filter if it is installed. If the platform refuses that, the filter passes
  /// every click until the next installation.
  void RemoveMouseDownHandler();

  /// Reads whether the host zooms with the scroll wheel; see `readZoomWithScrollWheel` in
  /// hostactions/ZoomPreference.h, which also specifies what it throws.
  static bool getZoomWithScrollWheel();

  /// 0: ready for input; 1 to 51: waiting for the host's redraw and counting dropped samples.
  std::int16_t m_refreshWait;
  bool m_zoomWithScrollWheel;  ///< the host's preference, read once by the constructor
  EventHandlerRef m_deviceHandlerRef;
  EventHandlerRef m_mouseDownHandlerRef;  ///< the click filter, null if it is not installed

 private:
  /// Returns true if a sample may be acted on. Otherwise counts it as dropped; the 51st drop ends
  /// the wait, so a redraw that never comes does not block the device permanently.
  bool takeSample();

  /// Starts the wait for the host's redraw unless it is in progress.
  void beginRedrawWait();

  /// Posts one tick at the mouse, at the window's centre if the mouse is outside, or at the mouse's
  /// height on the vertical centre line if the mouse is on the right edge. Starts the wait for the
  /// redraw first, even if the window is then too narrow for a tick to be posted.
  void postTick(UInt16 axis, SInt32 delta, UInt32 modifiers);
};

/// The receiver of device events; `userData` is the `Navigate2D`. Consumes every event and returns
/// 0. Throws nothing. [main-thread]
OSStatus deviceHandler(EventHandlerCallRef nextHandler, EventRef event, void* userData);

/// The platform's report of `count` redrawn rectangles. Ends the wait of the `Navigate2D` that
/// `userInfo` points to if a rectangle overlaps the main window's content. The rectangles' y is
/// compared with the window's y without conversion; the pacing of ticks depends on that.
/// [main-thread]
void screenRefreshCallback(std::uint32_t count, const CGRect* rects, void* userInfo);

/// The click filter: while it is installed, no real click reaches the host. It passes a mouse-down
/// or mouse-up on only if the first byte of its parameter 'MrVe' (typeChar) is 1, and passes every
/// other event on. Returns 0 for an event that it consumes, else what the next handler returns.
/// [main-thread]
OSStatus mouseDownHandler(EventHandlerCallRef nextHandler, EventRef event, void* userData);
