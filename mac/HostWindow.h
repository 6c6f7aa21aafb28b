// The window that plays the host's document window. [main-thread]
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "mac/Beliefs.h"

namespace mrvmac {

class HostWindow {
 public:
  /// Opens the window in the middle of the main screen, in front of all others. Each input is
  /// followed by a redraw after `redrawDelay` milliseconds, as a host does it.
  explicit HostWindow(double redrawDelay);
  ~HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  /// Handles the events that come within so many seconds.
  void handleEvents(double seconds);

  /// Observes the window, its marks, the mouse, and a redraw of its upper edge.
  void probe(Observations& seen);

  /// Adds what arrived in the window since it was opened, redraws, and refresh callbacks.
  void report(Observations& seen) const;

  /// Whether a place, counted from the top left of the main screen, is in the content.
  bool contains(double x, double y) const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace mrvmac
