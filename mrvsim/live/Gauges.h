// How near the plug-in is to its next tick, inferred from the samples, the ticks and the redraws.
#pragma once

#include "simulator/base/Log.h"
#include "simulator/scenario/Player.h"

namespace simulator::live {

/// Which of a sample's motions is the strongest.
enum class Motion { kRest, kZoom, kPan, kBrush };

Motion strongestMotion(const std::array<std::int16_t, 6>& axes);

/// What the plug-in has gathered since its last tick. It does not show this itself, so this follows
/// its rules from outside; each tick in the log sets the gauge right again. [main-thread]
class Gauges : public PlayerObserver {
 public:
  // What fills the gauges.
  static constexpr int kZoomCounts = 11;
  static constexpr int kPanPixels = 6;
  static constexpr int kBrushCounts = 501;
  static constexpr int kLongestWait = 51;

  void message(const DeviceMessage& message, bool active, bool pending) override;
  void redrawn() override { wait_ = 0; }

  /// Takes a line of the log.
  void line(const LogLine& line);

  int zoom() const { return zoom_; }    ///< counts; the sign is the direction
  int pan() const { return pan_; }      ///< pixels
  int brush() const { return brush_; }  ///< counts
  int wait() const { return wait_; }    ///< samples dropped since a tick, counted from 1; 0: none

 private:
  bool takesSample(bool pending);
  void twist(int counts);
  void wheel(const Json& line);

  int zoom_ = 0, pan_ = 0, brush_ = 0, wait_ = 0;
};

}  // namespace simulator::live
