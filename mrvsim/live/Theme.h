// The colours and measures of the live window.
#pragma once

#include <imgui.h>

#include <cstdint>

namespace simulator::live {

struct Colour {
  std::uint8_t red, green, blue;

  /// With an opacity from 0 to 1.
  ImU32 shade(double opacity = 1) const {
    return IM_COL32(red, green, blue, static_cast<int>(opacity * 255 + 0.5));
  }
  operator ImU32() const { return shade(); }
};

constexpr Colour kBackground = {23, 25, 30};
constexpr Colour kPanel = {31, 34, 41};
constexpr Colour kLine = {50, 54, 64};
constexpr Colour kTrough = {41, 45, 54};
constexpr Colour kText = {226, 229, 235};
constexpr Colour kFaint = {143, 150, 163};

// One colour for each thing, the same in every part of the window; they also differ in brightness.
constexpr Colour kZoomColour = {88, 166, 255};
constexpr Colour kPanColour = {86, 211, 140};
constexpr Colour kBrushColour = {245, 175, 79};
constexpr Colour kWaitColour = {176, 142, 240};
constexpr Colour kAlarmColour = {243, 104, 96};

constexpr int kWindowWidth = 1440;
constexpr int kWindowHeight = 900;
constexpr int kLeastWidth = 1120;
constexpr int kLeastHeight = 720;

/// Gives Dear ImGui's present context these colours.
void applyTheme();

}  // namespace simulator::live
