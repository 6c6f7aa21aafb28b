// View navigation: each sample of device motion changes the brush, zooms or pans.
#pragma once

#include <Carbon/Carbon.h>

#include <cstdint>

/// Which wheel a tick turns; any value other than the vertical one means the horizontal wheel.
enum : UInt16 { kHorizontalWheel = 0, kVerticalWheel = 1 };

/// The plug-in's one navigator. Zoom and pan gather small motions and then post one tick of a
/// synthesized scroll wheel over the document; while the host has not yet redrawn after a tick,
/// samples are dropped. [main-thread]
class Navigate2D {
 public:
  /// The one navigator, made on the first call. Throws what `getZoomWithScrollWheel` throws; the
  /// next call then tries again. [any-thread]
  static Navigate2D& Instance();

  /// Reads the host's preference, shortens the hold on local input after synthesized events to
  /// 0.1 s, and registers for screen refreshes and device events.
  /// REQUIRES: the object's storage is zero: the wait counter and the click filter are left alone.
  Navigate2D();

  /// Unregisters from screen refreshes alone: the process is ending, and the handlers go with it.
  ~Navigate2D();

  Navigate2D(const Navigate2D&) = delete;
  Navigate2D& operator=(const Navigate2D&) = delete;

  void installDeviceHandler();

  /// One zoom sample, device counts along z; positive zooms in. Dropped while the host has not
  /// redrawn.
  void ZoomEvent(short z);

  /// One pan sample, device counts, negated. Holds real clicks back from the first motion to the
  /// first sample at rest; dropped while the host has not redrawn.
  void PanEvent(short dx, short dy);

  /// Gathers `delta` device counts and, from 11 on, posts one zoom tick of one pixel.
  void SimulateScrollWheelZoom(int delta);

  /// Turns a pan sample (-32768 to 32767 each way) into a step along its larger axis; vertical
  /// where both are equal.
  void SimulateScrollbarPan(int dx, int dy);

  /// Gathers the displacement between the two points and, from 6 on, posts one pan tick of eight
  /// pixels. `window` is not used.
  void SimulateScrollWheelPanEvent(WindowRef window, Point start, Point end);

  /// Posts one tick of the wheel at `where` (y upward), with the modifier keys (`cmdKey`,
  /// `optionKey`) pressed round it. `axis` is one of the wheels above, `delta`
  /// pixels. `window` is not used. Returns 0.
  int SimulateWheelMovedEvent(WindowRef window, UInt16 axis, SInt32 delta, Point where,
                              UInt32 modifiers);

  /// Does nothing and returns 0.
  int SimulateMouseDragEvent(WindowRef window, Point start, Point end);

  /// Leaves `control` untouched and returns 0.
  int GetSbarControl(WindowRef window, SInt32 selector, ControlRef* control);

  void InstallMouseDownHandler();
  void RemoveMouseDownHandler();

  /// The host's preference (hostactions/ZoomPreference.h).
  static bool getZoomWithScrollWheel();

  /// 0: ready for input; 1 to 51: waiting for the host's redraw, counting the samples dropped.
  std::int16_t m_refreshWait;
  bool m_zoomWithScrollWheel;
  EventHandlerRef m_deviceHandlerRef;
  EventHandlerRef m_mouseDownHandlerRef;  ///< the click filter, null while it is not installed

 private:
  /// Takes a sample, or drops and counts it while the host has not redrawn: at the 51st drop the
  /// wait ends by itself, so that a redraw that never comes does not stop the device for good.
  /// Returns true if the sample was taken.
  bool takeSample();

  /// Begins the wait for the host's redraw, unless it is under way.
  void beginRedrawWait();

  /// Posts one tick at the mouse, or at the window's centre if the mouse is outside. On the right
  /// edge it moves to the centre line. The wait begins before anything is posted, and also if the
  /// window turns out too narrow to post anything.
  void postTick(UInt16 axis, SInt32 delta, UInt32 modifiers);
};

/// The receiver of device events; `userData` is the `Navigate2D`. Consumes every event that it is
/// given and returns 0; nothing is thrown out of it. [main-thread]
OSStatus deviceHandler(EventHandlerCallRef nextHandler, EventRef event, void* userData);

/// The platform's report of `count` redrawn rectangles. Ends the wait of the `Navigate2D` that
/// `userInfo` points to, at the first rectangle that overlaps the main window's content. The
/// rectangles are compared with the window's y without conversion; kept as hosts' pacing has it.
/// [main-thread]
void screenRefreshCallback(std::uint32_t count, const CGRect* rects, void* userInfo);

/// The click filter: while it is installed no real click reaches the host. A mouse-down or mouse-up
/// passes only with the one-byte marker 'MrVe' = 1; every other mouse event passes. [main-thread]
OSStatus mouseDownHandler(EventHandlerCallRef nextHandler, EventRef event, void* userData);
