// How the host reacts to input: the wheel moves its document view, the bracket keys change its
// brush, and the window is redrawn some time later. [main-thread]
#pragma once

#include <Carbon/Carbon.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "simulator/macos/CFObjects.h"

namespace simulator {

class DocumentView {
 public:
  /// The zoom factor, from 0.01 to 32.
  double zoom = 1.0;

  /// The document's upper left corner, in pixels to the right of and below the upper left corner of
  /// the window's content.
  CGPoint origin = {0.0, 0.0};

  /// Milliseconds from the first reaction after a redraw to the next redraw; with nullopt the host
  /// does not react to input.
  std::optional<double> redrawDelay;

  /// The host's preference: if true, the wheel zooms, and scrolls with option held; if false, it
  /// scrolls, and zooms with option held.
  bool zoomWithScrollWheel = false;

  /// Reacts to a wheel tick: zooms by 10 % around the pointer, or scrolls by the tick's pixels. The
  /// second wheel scrolls sideways, and so does the first with command held.
  void react(const SynthesizedEvent& event);

  /// Reacts to a keyboard event: the layout's bracket keys change the brush if the current tool has
  /// one.
  void react(EventRef event);

  /// The virtual time of the next redraw, in milliseconds; nullopt if none is due.
  std::optional<double> redrawDue() const { return redrawDue_; }

  /// Marks the window as drawn and calls the refresh callbacks with its content rectangle in global
  /// display coordinates, y growing downward.
  void redraw();

  /// Closes the window. A redraw that is due is dropped.
  void close();

  /// Called after each redraw with the rectangles that the refresh callbacks got.
  std::function<void(const std::vector<CGRect>&)> reported = [](const std::vector<CGRect>&) {};

 private:
  void zoomBy(double factor, CGPoint pointer);
  void reacted();

  std::optional<double> redrawDue_;
};

/// The process-wide document view; it outlives every static object.
DocumentView& theDocumentView();

/// The diameter after one press of the larger-brush key, or of the smaller-brush key: steps of 1
/// below 10 pixels, 10 below 100, 25 below 200, 50 below 300, else 100. The result is from 1 to
/// 2500.
double steppedDiameter(double diameter, bool larger);

}  // namespace simulator
