#include "mrvsim/live/Picture.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace simulator::live {

namespace {

struct Light {
  double red = 0, green = 0, blue = 0;
};

constexpr Light kZenith = {38, 52, 98};
constexpr Light kEvening = {214, 110, 104};
constexpr Light kGlow = {255, 214, 150};
constexpr Light kSun = {255, 244, 214};
constexpr Light kPaint = {64, 214, 190};

// The picture's heights, as shares of the whole.
constexpr double kHorizon = 0.62;
constexpr double kShore = 0.80;

Light mixed(const Light& a, const Light& b, double share) {
  const double t = std::clamp(share, 0.0, 1.0);
  return {a.red + (b.red - a.red) * t, a.green + (b.green - a.green) * t,
          a.blue + (b.blue - a.blue) * t};
}

std::uint32_t packed(const Light& colour) {
  const auto byte = [](double value) {
    return static_cast<std::uint32_t>(std::clamp(std::lround(value), 0L, 255L));
  };
  return byte(colour.red) | byte(colour.green) << 8 | byte(colour.blue) << 16 | 0xFF000000U;
}

/// A number from 0 to 1 that looks like chance, and is the same for the same number.
double chance(std::uint32_t n) {
  n ^= n >> 16;
  n *= 0x7FEB352DU;
  n ^= n >> 15;
  n *= 0x846CA68BU;
  n ^= n >> 16;
  return n / 4294967295.0;
}

Light sky(double x, double y) {
  const Light gradient = y < 0.34 ? mixed(kZenith, kEvening, y / 0.34)
                                  : mixed(kEvening, kGlow, (y - 0.34) / (kHorizon - 0.34));
  const double distance = std::hypot((x - 0.64) * 1.6, y - 0.44);
  const Light glowing = mixed(gradient, kGlow, 0.75 * std::exp(-distance * distance * 30));
  return mixed(glowing, kSun, (0.085 - distance) * 400);
}

/// A chain of mountains: the colour is that of the far ones in the evening's haze.
struct Ridge {
  double height, roughness, phase;
  Light colour;
};
constexpr std::array kRidges = {
    Ridge{0.52, 0.070, 0.3, {176, 118, 132}}, Ridge{0.58, 0.085, 2.1, {124, 88, 122}},
    Ridge{0.65, 0.080, 4.4, {78, 64, 104}}, Ridge{0.72, 0.060, 5.2, {44, 46, 80}}};

double ridgeLine(const Ridge& ridge, double x) {
  const double waves = std::sin(x * 5.1 + ridge.phase) +
                       0.5 * std::sin(x * 11.7 + ridge.phase * 2) +
                       0.25 * std::sin(x * 29 + ridge.phase * 3) + 0.1 * std::sin(x * 71);
  return ridge.height - ridge.roughness * waves * 0.55;
}

/// Firs stand along the shore, so that there are small things to zoom in on.
double treeLine(double x) {
  constexpr double kTrees = 90;
  const auto tree = static_cast<std::uint32_t>(x * kTrees);
  const double height = 0.025 + 0.06 * chance(tree + 17);
  const double across = std::abs(x * kTrees - tree - 0.5) * 2;
  const double jagged = 0.12 * std::fmod(across * 5, 1.0);
  return kShore - 0.005 - height * std::max(0.0, 1 - across - jagged);
}

/// What a column of the picture looks like, as far as it does not depend on the row.
struct Column {
  double x = 0;
  double trees = 0;
  double swell = 0;  ///< of the lake's waves
  std::array<double, kRidges.size()> ridges{};
};

class Landscape {
 public:
  Landscape() : columns_(Picture::kWidth) {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      Column& column = columns_[i];
      column.x = (static_cast<double>(i) + 0.5) / Picture::kWidth;
      column.trees = treeLine(column.x);
      column.swell = 3 * std::sin(column.x * 9);
      std::transform(kRidges.begin(), kRidges.end(), column.ridges.begin(),
                     [&](const Ridge& ridge) { return ridgeLine(ridge, column.x); });
    }
  }

  Light at(int column, int row) const {
    const double y = (row + 0.5) / Picture::kHeight;
    const Column& here = columns_[static_cast<std::size_t>(column)];
    return y < kShore ? land(here, y) : water(here, y);
  }

 private:
  /// The nearest thing hides the others.
  static Light land(const Column& column, double y) {
    if (y > column.trees) return {20, 26, 44};
    for (std::size_t i = kRidges.size(); i-- > 0;) {
      const double depth = y - column.ridges[i];
      if (depth > 0) return mixed(kRidges[i].colour, kGlow, 0.35 * std::max(0.0, 1 - depth * 9));
    }
    return sky(column.x, y);
  }

  /// The lake shows the land upside down, broken by waves that grow towards the viewer.
  Light water(const Column& column, double y) const {
    const double depth = y - kShore;
    const double wave = std::sin(depth * 900 / (1 + depth * 14) + column.swell) * depth * 0.05;
    const double mirrored = std::clamp(column.x + wave * 0.6, 0.0, 1.0) * (Picture::kWidth - 1);
    const Column& there = columns_[static_cast<std::size_t>(mirrored)];
    return mixed(land(there, kShore - depth * 2.4 + wave), {24, 40, 78}, 0.35 + depth * 1.2);
  }

  std::vector<Column> columns_;
};

}  // namespace

Picture::Picture() : pixels_(std::size_t{kWidth} * kHeight) {
  const Landscape landscape;
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) at(x, y) = packed(landscape.at(x, y));
  }
}

std::uint32_t& Picture::at(int x, int y) {
  return pixels_[static_cast<std::size_t>(y) * kWidth + static_cast<std::size_t>(x)];
}

PixelRect Picture::paint(double x, double y, double diameter) {
  const double radius = std::max(diameter, 1.0) / 2;
  const auto bound = [](double value, int most) {
    return static_cast<int>(std::clamp(value, 0.0, double{1} * most));
  };
  const int left = bound(std::floor(x - radius), kWidth);
  const int right = bound(std::ceil(x + radius), kWidth);
  const int top = bound(std::floor(y - radius), kHeight);
  const int bottom = bound(std::ceil(y + radius), kHeight);
  const std::uint32_t paint = packed(kPaint);
  for (int row = top; row < bottom; ++row) {
    for (int column = left; column < right; ++column) {
      const bool isInside = std::hypot(column + 0.5 - x, row + 0.5 - y) <= radius + 0.2;
      if (isInside) at(column, row) = paint;
    }
  }
  return {left, top, right - left, bottom - top};
}

}  // namespace simulator::live
