// How the host itself reacts to input: its document view follows the wheel, its brush the bracket
// keys, and the window is redrawn some time later. [main-thread]
#pragma once

#include <Carbon/Carbon.h>

#include <cstdint>
#include <functional>
#include <optional>

#include "simulator/macos/CFObjects.h"

namespace simulator {

class DocumentView {
 public:
  /// 1.0 is 100 %; from 0.01 to 32.
  double zoom = 1.0;

  /// Where the document's upper left corner lies, in pixels right of and below that of the
  /// window's content.
  CGPoint origin = {0.0, 0.0};

  /// Milliseconds from the first reaction since the last redraw to the next redraw; none: the host
  /// reacts to nothing.
  std::optional<double> redrawDelay;

  /// The host's preference: the wheel zooms, and scrolls with option held; else the other way
  /// round.
  bool zoomWithScrollWheel = false;

  /// Reacts to a tick of the wheel: 10 % of zoom round the pointer, or its pixels of scrolling,
  /// sideways by the second wheel or with command held.
  void react(const SynthesizedEvent& event);

  /// Reacts to a keyboard event of the event manager's: the layout's bracket keys change the brush
  /// of a tool that has one.
  void react(EventRef event);

  /// When the window is redrawn next, in virtual milliseconds; none where nothing waits.
  std::optional<double> redrawDue() const { return redrawDue_; }

  /// Redraws: the window is clean, and the refresh callbacks get its content rectangle.
  void redraw();

  /// Called after each redraw.
  std::function<void()> redrawn = [] {};

 private:
  void zoomBy(double factor, CGPoint pointer);
  void reacted();

  std::optional<double> redrawDue_;
};

/// The host's view of its document; it outlives every static object.
DocumentView& theDocumentView();

/// The diameter that the host goes to from `diameter` at one press of the larger-brush key, or the
/// smaller one: steps of 1 below 10 pixels, 10 below 100, 25 below 200, 50 below 300, else 100,
/// from 1 to 2500.
double steppedDiameter(double diameter, bool larger);

}  // namespace simulator
