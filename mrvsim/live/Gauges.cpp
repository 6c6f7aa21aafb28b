#include "mrvsim/live/Gauges.h"

#include <CoreGraphics/CoreGraphics.h>
#include <MoravinClient/MoravinClient.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "mrvsim/live/Hand.h"
#include "simulator/host/Host.h"
#include "simulator/macos/WindowServer.h"
#include "simulator/moravin/Framework.h"

namespace simulator::live {

namespace {

constexpr int kSmallestTwist = 20;
constexpr int kAfterBrushKey = 1;

std::int64_t squared(std::int16_t value) { return std::int64_t{value} * value; }

/// The pixels that a sideways motion adds, which is turned round first. The share is rounded down,
/// so only one of the two directions has a dead zone.
int panPixels(std::int16_t counts) {
  constexpr double kCountsSquaredInPixel = 250;
  const double turned = -double{1} * counts;
  return -static_cast<int>(std::floor(turned * std::abs(turned) / kCountsSquaredInPixel));
}

}  // namespace

Motion strongestMotion(const std::array<std::int16_t, 6>& axes) {
  const std::int64_t push = squared(axes[kPush]);
  const std::int64_t twist = squared(axes[kTwist]);
  const std::int64_t slide = std::max(squared(axes[kSideways]), squared(axes[kUpward]));
  if (push == 0 && twist == 0 && slide == 0) return Motion::kRest;
  if (twist > push && twist > slide) return Motion::kBrush;
  return push > twist && push > slide ? Motion::kZoom : Motion::kPan;
}

void Gauges::message(const DeviceMessage& message, bool active, bool pending) {
  if (message.command != kMoravinCommandAxes || !theFramework().isInstalled()) return;
  const Sample axes = active ? message.axes : Sample{};
  const Motion motion = strongestMotion(axes);
  if (motion != Motion::kBrush) brush_ = 0;
  if (motion == Motion::kBrush) return twist(axes[kTwist]);
  if (!takesSample(pending) || !theWindowServer().window().isMain) return;
  if (motion == Motion::kZoom) {
    zoom_ += axes[kPush];
  } else if (motion == Motion::kPan) {
    const bool sideways = std::abs(axes[kSideways]) > std::abs(axes[kUpward]);
    pan_ += panPixels(axes[sideways ? kSideways : kUpward]);
  }
}

/// After a tick, samples are dropped until the redraw, or until the longest wait is over.
bool Gauges::takesSample(bool pending) {
  if (wait_ == 0 && !pending) return true;
  wait_ = wait_ < kLongestWait ? wait_ + 1 : 0;
  return false;
}

void Gauges::twist(int counts) {
  const WindowState& window = theWindowServer().window();
  const bool counted = std::abs(counts) >= kSmallestTwist && window.isMain &&
                       !window.contentNeedsDisplay && theHost().brush().has_value();
  if (counted) brush_ += counts;
}

void Gauges::line(const LogLine& line) {
  if (line.what() == "wheel") {
    wheel(line.json());
  } else if (line.what() == "posted" && line.has(R"("class":"keyb","kind":1,)")) {
    brush_ = kAfterBrushKey;
  }
}

void Gauges::wheel(const Json& line) {
  const Json& wheels = line["wheels"];
  const bool command = (line["flags"].get<std::uint64_t>() & kCGEventFlagMaskCommand) != 0;
  const bool isZoom = wheels.size() == 1 && !command && std::abs(wheels[0].get<int>()) == 1;
  (isZoom ? zoom_ : pan_) = 0;
  wait_ = std::max(wait_, 1);
}

}  // namespace simulator::live
