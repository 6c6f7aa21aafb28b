// The panel of motion: the cap that can be pulled, the six axes, what they add up to, and the
// ticks.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "mrvsim/live/Gauges.h"
#include "mrvsim/live/Stage.h"

namespace simulator::live {

namespace {

constexpr float kCapSize = 148;
constexpr double kGlowTime = 300;  ///< milliseconds

struct MotionLook {
  const char* name;
  const char* effect;
  Colour colour;
};

MotionLook lookOf(Motion motion) {
  switch (motion) {
    case Motion::kZoom:
      return {"Push or pull", "zooms", kZoomColour};
    case Motion::kPan:
      return {"Slide", "pans", kPanColour};
    case Motion::kBrush:
      return {"Twist", "changes the brush", kBrushColour};
    default:
      return {"At rest", "", kFaint};
  }
}

Colour colourOfAxis(std::size_t axis) {
  switch (axis) {
    case kPush:
      return kZoomColour;
    case kTwist:
      return kBrushColour;
    case kSideways:
    case kUpward:
      return kPanColour;
    default:
      return kFaint;
  }
}

double glow(std::int64_t age) { return std::max(0.0, 1 - static_cast<double>(age) / kGlowTime); }

/// The left button slides the cap, the right one pushes and twists it.
void pullCap(const Stage& stage, float radius) {
  Hand& hand = stage.driver.hand();
  const auto share = [&](float pixels) {
    return std::clamp(static_cast<double>(pixels / radius), -1.0, 1.0);
  };
  const ImVec2 slide = ImGui::GetMouseDragDelta(ImGuiMouseButton_Left, 0);
  const ImVec2 turn = ImGui::GetMouseDragDelta(ImGuiMouseButton_Right, 0);
  if (!ImGui::IsItemActive()) {
    hand.pull(std::nullopt);
  } else {
    Deflection pulled = {};
    pulled[kSideways] = share(slide.x);
    pulled[kUpward] = -share(slide.y);
    pulled[kTwist] = share(turn.x);
    pulled[kPush] = -share(turn.y);
    hand.pull(pulled);
  }
}

void drawCap(const Stage& stage) {
  const ImVec2 from = ImGui::GetCursorScreenPos();
  ImGui::InvisibleButton("cap", {kCapSize, kCapSize},
                         ImGuiButtonFlags_MouseButtonLeft | ImGuiButtonFlags_MouseButtonRight);
  stage.widgets.notePlace("Cap", from, {from.x + kCapSize, from.y + kCapSize});
  const float radius = kCapSize / 2;
  pullCap(stage, radius);
  ImDrawList& list = *ImGui::GetWindowDrawList();
  const ImVec2 middle = {from.x + radius, from.y + radius};
  list.AddCircleFilled(middle, radius, kTrough, 48);
  const Deflection cap = stage.driver.cap();
  const auto moved = [](double share) { return static_cast<float>(share); };
  const ImVec2 knob = {middle.x + moved(cap[kSideways]) * 26, middle.y - moved(cap[kUpward]) * 26};
  const float size = 40 - moved(cap[kPush]) * 9;
  list.AddCircleFilled({knob.x, knob.y + 4}, size + 2, kBackground.shade(0.6), 40);
  list.AddCircleFilled(knob, size, Colour{88, 95, 110}, 40);
  list.AddCircleFilled(knob, size - 6, Colour{104, 112, 129}, 40);
  const auto angle = static_cast<float>(cap[kTwist] * 1.2 - 1.5707963);
  const auto at = [&](float distance) {
    return ImVec2{knob.x + std::cos(angle) * distance, knob.y + std::sin(angle) * distance};
  };
  list.AddLine(at(size - 18), at(size - 3), kText, 3);
}

void drawAxes(const Sample& sample, double full) {
  static constexpr const char* kNames[kAxes] = {"sideways",  "push",  "up",
                                                "tilt back", "twist", "tilt aside"};
  const float width = ImGui::GetContentRegionAvail().x;
  constexpr float row = kCapSize / static_cast<float>(kAxes);
  const ImVec2 from = ImGui::GetCursorScreenPos();
  ImDrawList& list = *ImGui::GetWindowDrawList();
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    const float y = from.y + row * static_cast<float>(axis);
    list.AddText({from.x, y + 3}, kFaint, kNames[axis]);
    Widgets::bar({from.x + 74, y + 6}, {from.x + width - 42, y + row - 7}, sample[axis] / full,
                 true, colourOfAxis(axis));
    const std::string number = std::to_string(sample[axis]);
    const ImVec2 size = ImGui::CalcTextSize(number.c_str());
    list.AddText({from.x + width - size.x, y + 3}, kText, number.c_str());
  }
  ImGui::Dummy({width, kCapSize});
}

void drawDominant(const Stage& stage, Motion motion) {
  const MotionLook look = lookOf(motion);
  const ImVec2 from = ImGui::GetCursorScreenPos();
  const float width = ImGui::GetContentRegionAvail().x;
  constexpr float kRowHeight = 40;
  ImDrawList& list = *ImGui::GetWindowDrawList();
  fillRounded(list, from, {from.x + width, from.y + kRowHeight}, kTrough, 5);
  fillRounded(list, from, {from.x + 5, from.y + kRowHeight}, look.colour, 2);
  list.AddText(stage.large, stage.large->FontSize, {from.x + 18, from.y + 8}, look.colour,
               look.name);
  const ImVec2 size = ImGui::CalcTextSize(look.effect);
  list.AddText({from.x + width - size.x - 14, from.y + 11}, kText, look.effect);
  ImGui::Dummy({width, kRowHeight});
}

struct Threshold {
  const char* name;
  int value;
  int full;
  const char* unit;
  bool isSigned;
  Colour colour;
};

void drawThreshold(const Threshold& threshold) {
  const ImVec2 from = ImGui::GetCursorScreenPos();
  const float width = ImGui::GetContentRegionAvail().x;
  constexpr float kRowHeight = 20;
  ImDrawList& list = *ImGui::GetWindowDrawList();
  list.AddText({from.x, from.y + 1}, kText, threshold.name);
  const double share = double{1} * threshold.value / threshold.full;
  Widgets::bar({from.x + 112, from.y + 5}, {from.x + width - 96, from.y + 15}, share,
               threshold.isSigned, threshold.colour);
  const std::string text =
      fmt::format("{} / {} {}", threshold.value, threshold.full, threshold.unit);
  const ImVec2 size = ImGui::CalcTextSize(text.c_str());
  list.AddText({from.x + width - size.x, from.y + 1}, kFaint, text.c_str());
  ImGui::Dummy({width, kRowHeight});
}

void drawThresholds(const HostState& host) {
  drawThreshold({"zoom tick", host.zoomCounts, Gauges::kZoomCounts, "counts", true, kZoomColour});
  drawThreshold({"pan tick", host.panPixels, Gauges::kPanPixels, "pixels", true, kPanColour});
  drawThreshold(
      {"brush key", host.brushCounts, Gauges::kBrushCounts, "counts", true, kBrushColour});
  drawThreshold({"redraw wait", host.wait, Gauges::kLongestWait, "dropped", false, kWaitColour});
}

struct Lamp {
  const char* name;
  Flash flash;
  Colour colour;
};

void drawLamps(const Stage& stage) {
  static constexpr Lamp kLamps[] = {
      {"zoom in", kZoomIn, kZoomColour},   {"pan left", kPanLeft, kPanColour},
      {"pan up", kPanUp, kPanColour},      {"brush +", kBrushLarger, kBrushColour},
      {"zoom out", kZoomOut, kZoomColour}, {"pan right", kPanRight, kPanColour},
      {"pan down", kPanDown, kPanColour},  {"brush \xE2\x88\x92", kBrushSmaller, kBrushColour}};
  constexpr int kInRow = 4;
  const Driver& driver = stage.driver;
  const float gap = ImGui::GetStyle().ItemSpacing.x;
  const float width = (ImGui::GetContentRegionAvail().x - gap * (kInRow - 1)) / kInRow;
  int column = 0;
  for (const Lamp& lamp : kLamps) {
    if (column++ % kInRow != 0) ImGui::SameLine();
    Widgets::lamp(lamp.name, width, glow(driver.seen().since(lamp.flash, driver.time())),
                  lamp.colour);
  }
}

void drawKeys(const Stage& stage) {
  struct Key {
    const char* name;
    int code;
  };
  static constexpr Key kKeys[] = {{"option", 58}, {"command", 55}};
  const Driver& driver = stage.driver;
  const float gap = ImGui::GetStyle().ItemSpacing.x;
  const float width = (ImGui::GetContentRegionAvail().x - gap * 3) / 4;
  for (const Key& key : kKeys) {
    const bool isHeld = driver.seen().keysHeld().contains(key.code);
    const double light = isHeld ? 1 : glow(driver.seen().sinceKey(key.code, driver.time()));
    Widgets::lamp(key.name, width, light, kText);
    ImGui::SameLine();
  }
  const Seen& seen = driver.seen();
  Widgets::lamp("click", width, glow(seen.since(kClickPassed, driver.time())), kText);
  ImGui::SameLine();
  Widgets::lamp("held back", width, glow(seen.since(kClickHeldBack, driver.time())), kAlarmColour);
}

/// The last ten seconds: which motion was the strongest, and the ticks.
void drawStrip(const Stage& stage) {
  const ImVec2 from = ImGui::GetCursorScreenPos();
  const float width = ImGui::GetContentRegionAvail().x;
  const float height = std::max(24.0F, ImGui::GetContentRegionAvail().y - 20);
  ImDrawList& list = *ImGui::GetWindowDrawList();
  const Driver& driver = stage.driver;
  const std::int64_t now = driver.time();
  const auto placeOf = [&](std::int64_t at) {
    const double share = static_cast<double>(now - at) / double{1} / Seen::kRemembered;
    return from.x + width * static_cast<float>(1 - std::min(share, 1.0));
  };
  fillRounded(list, from, {from.x + width, from.y + height}, kTrough, 4);
  const float lane = height / 2;
  // Samples of one motion in a row are one field.
  const auto& samples = driver.samples();
  for (std::size_t i = 0; i < samples.size();) {
    const Motion motion = strongestMotion(samples[i].axes);
    std::size_t end = i + 1;
    while (end < samples.size() && strongestMotion(samples[end].axes) == motion &&
           samples[end].at - samples[end - 1].at < 100) {
      ++end;
    }
    const float right = std::max(placeOf(samples[end - 1].at + 10), placeOf(samples[i].at) + 1);
    if (motion != Motion::kRest) {
      fillRounded(list, {placeOf(samples[i].at), from.y + 4}, {right, from.y + lane - 3},
                  lookOf(motion).colour.shade(0.75), 1);
    }
    i = end;
  }
  for (const Happening& happening : driver.seen().happenings) {
    const bool isZoom = happening.flash == kZoomIn || happening.flash == kZoomOut;
    const bool isBrush = happening.flash == kBrushLarger || happening.flash == kBrushSmaller;
    const bool isClick = happening.flash == kClickHeldBack;
    if (happening.flash == kRedrawn || happening.flash == kClickPassed) continue;
    const Colour colour = isZoom    ? kZoomColour
                          : isBrush ? kBrushColour
                          : isClick ? kAlarmColour
                                    : kPanColour;
    const float x = placeOf(happening.at);
    list.AddRectFilled({x - 0.5F, from.y + lane + 3}, {x + 1, from.y + height - 4}, colour);
  }
  ImGui::Dummy({width, height});
}

}  // namespace

void drawMotion(const Stage& stage, const Area& area) {
  beginPart("motion", area);
  const Sample sample = stage.driver.lastSample();
  stage.widgets.title("The cap");
  ImGui::SameLine();
  Widgets::faint("  drag: slide;  right drag: push, twist");
  drawCap(stage);
  ImGui::SameLine(0, 20);
  drawAxes(sample, std::max(stage.driver.fullDeflection, 350.0));
  drawDominant(stage, strongestMotion(sample));
  ImGui::Dummy({0, 2});
  stage.widgets.title("On the way to the next tick");
  drawThresholds(stage.driver.seen().host);
  ImGui::Dummy({0, 2});
  stage.widgets.title("Ticks, and the keys and clicks with them");
  drawLamps(stage);
  drawKeys(stage);
  ImGui::Dummy({0, 2});
  stage.widgets.title("The last ten seconds");
  ImGui::SameLine();
  Widgets::faint("  strongest motion, ticks");
  drawStrip(stage);
  ImGui::End();
}

}  // namespace simulator::live
