#include "simulator/scenario/Summary.h"

#include <MoravinClient/MoravinClient.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>

namespace simulator {

namespace {

constexpr std::uint64_t kCommandFlag = 0x100000;

std::int64_t square(std::int16_t value) { return std::int64_t{value} * value; }

}  // namespace

/// The device's second translation zooms, the rotation about it twists, the other translations pan.
Summary::Kind Summary::kindOf(const DeviceMessage& message, bool active) {
  const auto& axes = message.axes;
  const std::int64_t zoom = square(axes[1]);
  const std::int64_t twist = square(axes[4]);
  const std::int64_t pan = std::max(square(axes[0]), square(axes[2]));
  if (!active || (zoom == 0 && twist == 0 && pan == 0)) return kRest;
  if (twist > zoom && twist > pan) return kBrush;
  return zoom > twist && zoom > pan ? kZoom : kPan;
}

void Summary::message(const DeviceMessage& message, bool active, bool pending) {
  if (message.command != kMoravinCommandAxes) {
    ++otherMessages_;
    return;
  }
  if (!active) ++inBackground_;
  sample(kindOf(message, active), pending);
}

/// Mirrors the plug-in's pacing: after a tick it drops samples until the redraw, 51 at most.
void Summary::sample(Kind kind, bool pending) {
  constexpr int kLongestCount = 50;
  ++samples_[kind];
  if (kind == kBrush || (wait_ == 0 && !pending)) return;
  if (kind != kRest) ++dropped_;
  wait_ = wait_ <= kLongestCount ? wait_ + 1 : 0;
  if (wait_ == 0) endWait();
}

void Summary::redrawn() { endWait(); }

void Summary::endWait() {
  if (waitingSince_) longestWait_ = std::max(longestWait_, theLog().now() - *waitingSince_);
  waitingSince_.reset();
  wait_ = 0;
}

void Summary::line(const Json& line) {
  now_ = line["t"];
  const std::string what = line["what"];
  if (what == "wheel") wheel(line);
  if (what == "posted" && line["class"] == "keyb" && line["kind"] == 1) ++keysTyped_;
  if (what == "click") {
    ++clicks_;
    if (!line["passed"].get<bool>()) ++clicksHeldBack_;
  }
  if (what == "misuse") ++misuses_;
  if (what == "view") {
    view_ = line;
    const Json& brush = line["brush"];
    if (brush.is_number()) brushSize(brush.get<double>());
  }
}

/// Keeps the first and the last size and those at which the brush starts to grow or to shrink.
void Summary::brushSize(double size) {
  const std::size_t count = brushSizes_.size();
  if (count > 0 && brushSizes_.back().second == size) return;
  const auto at = [&](std::size_t fromEnd) { return brushSizes_[count - fromEnd].second; };
  const bool goesOn = count > 1 && (at(2) < at(1)) == (at(1) < size);
  if (goesOn) brushSizes_.pop_back();
  brushSizes_.emplace_back(now_, size);
}

void Summary::wheel(const Json& line) {
  const auto& wheels = line["wheels"];
  const auto vertical = wheels[0].get<int>();
  const bool sideways = wheels.size() > 1 || (line["flags"].get<std::uint64_t>() & kCommandFlag);
  if (!sideways && std::abs(vertical) == 1) {
    ++(vertical > 0 ? zoomIn_ : zoomOut_);
  } else {
    ++(sideways ? horizontal_ : vertical_);
  }
  if (wait_ == 0) {
    wait_ = 1;
    waitingSince_ = now_;
  }
}

std::string Summary::text() const {
  std::string text = fmt::format(
      "Device samples      {:6} zoom  {:6} pan  {:6} brush  {:6} at rest ({} in the background)\n"
      "Other messages      {:6}\n"
      "Wheel ticks         {:6} zoom in  {:6} zoom out  {:6} vertical  {:6} horizontal\n"
      "Dropped by pacing   {:6} samples; longest wait for a redraw {} ms\n"
      "Clicks held back    {:6} of {}\n"
      "Keys typed          {:6}\n",
      samples_[kZoom], samples_[kPan], samples_[kBrush], samples_[kRest], inBackground_,
      otherMessages_, zoomIn_, zoomOut_, vertical_, horizontal_, dropped_, longestWait_,
      clicksHeldBack_, clicks_, keysTyped_);
  if (view_.is_object()) {
    text += fmt::format("View at the end     {:6.1f} %, origin ({:.1f}, {:.1f})\n",
                        view_["zoom"].get<double>() * 100, view_["origin"][0].get<double>(),
                        view_["origin"][1].get<double>());
  }
  if (brushSizes_.size() > 1) {
    text += "Brush over time    ";
    for (const auto& [time, size] : brushSizes_) {
      text += fmt::format(" {:g} px at {:.1f} s;", size, static_cast<double>(time) / 1000);
    }
    text.back() = '\n';
  }
  if (!lostMotion_.empty()) text += fmt::format("Motion without effect  {}\n", lostMotion_);
  if (misuses_ > 0) text += fmt::format("Misuses             {:6}\n", misuses_);
  return text;
}

}  // namespace simulator
