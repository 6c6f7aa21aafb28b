// Colour services: conversions by way of RGB, and a picker with a simulated user.
#include <algorithm>
#include <cmath>

#include "simulator/host/callbacks/CallbackState.h"

namespace simulator {

namespace {

constexpr OSErr kUserCanceled = -128;
constexpr double kFull = 255.0;
constexpr double kCircle = 360.0;

using Channels = std::array<double, 4>;
using Rgb = std::array<double, 3>;  // each from 0 to 1

struct Extremes {
  explicit Extremes(const Rgb& c)
      : most(std::max({c[0], c[1], c[2]})), least(std::min({c[0], c[1], c[2]})) {}
  double chroma() const { return most - least; }

  double most;
  double least;
};

double ratio(double part, double whole) { return whole > 0.0 ? part / whole : 0.0; }

double hueDegrees(const Rgb& c) {
  const Extremes extremes(c);
  if (extremes.chroma() == 0.0) return 0.0;
  double sixth = (c[0] - c[1]) / extremes.chroma() + 4.0;
  if (extremes.most == c[0]) sixth = (c[1] - c[2]) / extremes.chroma() + 6.0;
  if (extremes.most == c[1]) sixth = (c[2] - c[0]) / extremes.chroma() + 2.0;
  return std::fmod(sixth * 60.0, kCircle);
}

// HSB and HSL to RGB: the standard formulas, one channel at a time.
Rgb rgbFromHsb(const Channels& c) {
  const double saturation = c[1] / kFull, brightness = c[2] / kFull;
  const auto channel = [&](double n) {
    const double k = std::fmod(n + c[0] / 60.0, 6.0);
    return brightness - brightness * saturation * std::clamp(std::min(k, 4.0 - k), 0.0, 1.0);
  };
  return {channel(5.0), channel(3.0), channel(1.0)};
}

Rgb rgbFromHsl(const Channels& c) {
  const double lightness = c[2] / kFull;
  const double amplitude = c[1] / kFull * std::min(lightness, 1.0 - lightness);
  const auto channel = [&](double n) {
    const double k = std::fmod(n + c[0] / 30.0, 12.0);
    return lightness - amplitude * std::clamp(std::min(k - 3.0, 9.0 - k), -1.0, 1.0);
  };
  return {channel(0.0), channel(8.0), channel(4.0)};
}

Rgb rgbFromCmyk(const Channels& c) {
  const double paper = 1.0 - c[3] / kFull;
  return {(1.0 - c[0] / kFull) * paper, (1.0 - c[1] / kFull) * paper, (1.0 - c[2] / kFull) * paper};
}

Rgb rgbFrom(int16 space, const Channels& c) {
  switch (space) {
    case plugIncolorServicesRGBSpace:
      return {c[0] / kFull, c[1] / kFull, c[2] / kFull};
    case plugIncolorServicesHSBSpace:
      return rgbFromHsb(c);
    case plugIncolorServicesCMYKSpace:
      return rgbFromCmyk(c);
    case plugIncolorServicesGraySpace:
      return {c[0] / kFull, c[0] / kFull, c[0] / kFull};
    case plugIncolorServicesHSLSpace:
      return rgbFromHsl(c);
    default:
      throw CallError{paramErr};
  }
}

Channels hsbFrom(const Rgb& c) {
  const Extremes extremes(c);
  return {hueDegrees(c), ratio(extremes.chroma(), extremes.most) * kFull, extremes.most * kFull, 0};
}

Channels hslFrom(const Rgb& c) {
  const Extremes extremes(c);
  const double lightness = (extremes.most + extremes.least) / 2.0;
  const double widest = 2.0 * std::min(lightness, 1.0 - lightness);
  return {hueDegrees(c), ratio(extremes.chroma(), widest) * kFull, lightness * kFull, 0};
}

Channels cmykFrom(const Rgb& c) {
  const double paper = Extremes(c).most;
  const auto ink = [&](double channel) { return ratio(paper - channel, paper) * kFull; };
  return {ink(c[0]), ink(c[1]), ink(c[2]), (1.0 - paper) * kFull};
}

Channels fromRgb(int16 space, const Rgb& c) {
  switch (space) {
    case plugIncolorServicesRGBSpace:
      return {c[0] * kFull, c[1] * kFull, c[2] * kFull, 0};
    case plugIncolorServicesHSBSpace:
      return hsbFrom(c);
    case plugIncolorServicesCMYKSpace:
      return cmykFrom(c);
    case plugIncolorServicesGraySpace:  // luma of ITU-R BT.601
      return {(0.299 * c[0] + 0.587 * c[1] + 0.114 * c[2]) * kFull, 0, 0, 0};
    case plugIncolorServicesHSLSpace:
      return hslFrom(c);
    default:
      throw CallError{paramErr};
  }
}

void convert(ColorServicesInfo& info) {
  Channels channels;
  std::copy(info.colorComponents, info.colorComponents + 4, channels.begin());
  channels = fromRgb(info.resultSpace, rgbFrom(info.sourceSpace, channels));
  std::transform(channels.begin(), channels.end(), info.colorComponents,
                 [](double channel) { return static_cast<int16>(std::lround(channel)); });
  info.resultGamutInfoValid = true;
  info.resultInGamut = true;
}

void choose(ColorServicesInfo& info) {
  CallbackState& state = callbackState();
  const Str255* prompt = info.selectorParameter.pickerPrompt;
  if (prompt == nullptr) throw CallError{paramErr};
  state.pickerPrompt.assign(reinterpret_cast<const char*>(*prompt) + 1, (*prompt)[0]);
  if (!state.pickedColor) throw CallError{kUserCanceled};
  if (info.resultSpace == plugIncolorServicesChosenSpace) {
    info.resultSpace = plugIncolorServicesRGBSpace;
  }
  info.sourceSpace = plugIncolorServicesRGBSpace;
  std::copy(state.pickedColor->begin(), state.pickedColor->end(), info.colorComponents);
  convert(info);
}

OSErr colorServices(ColorServicesInfo* info) {
  return callbackCall("ColorServices", [&] {
    if (destination(info).infoSize < static_cast<int32>(sizeof *info)) throw CallError{paramErr};
    switch (info->selector) {
      case plugIncolorServicesChooseColor:
        return choose(*info);
      case plugIncolorServicesConvertColor:
        return convert(*info);
      case plugIncolorServicesSamplePoint:
        throw CallError{errInvalidSamplePoint};  // there is no screen to sample
      default:
        throw CallError{paramErr};
    }
  });
}

}  // namespace

ColorServicesProc colorServicesProc() { return colorServices; }

void Callbacks::setPickedColor(std::optional<std::array<int16, 3>> rgb) {
  callbackState().pickedColor = rgb;
}

const std::string& Callbacks::pickerPrompt() const { return callbackState().pickerPrompt; }

}  // namespace simulator
