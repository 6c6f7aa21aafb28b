// The simulated screen with the host's window, in which the document lies as the plug-in has it.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "mrvsim/live/Stage.h"

namespace simulator::live {

namespace {

constexpr Colour kDesk = {15, 16, 20};
constexpr Colour kPasteboard = {56, 59, 66};
constexpr Colour kTitleBar = {72, 76, 85};
constexpr Colour kTitleText = {214, 217, 224};
constexpr double kFlashTime = 260;  ///< milliseconds

struct Rect {
  ImVec2 from, to;
};

Rect onWindow(const ScreenMap& map, const CGRect& rect) {
  const CGPoint low = rect.origin;
  const CGPoint high = {low.x + rect.size.width, low.y + rect.size.height};
  const auto whole = [](ImVec2 place) { return ImVec2{std::round(place.x), std::round(place.y)}; };
  return {whole(map.toWindow({low.x, high.y})), whole(map.toWindow({high.x, low.y}))};
}

void drawTitle(const Stage& stage, const ScreenMap& map, const Rect& frame, const Rect& content) {
  ImDrawList& list = *ImGui::GetWindowDrawList();
  fillRounded(list, frame.from, frame.to, kTitleBar, 6);
  const float middle = (frame.from.y + content.from.y) / 2;
  const float radius = static_cast<float>(5 * map.scale);
  const Colour lights[] = {{255, 95, 87}, {254, 188, 46}, {40, 200, 64}};
  for (int i = 0; i < 3; ++i) {
    const float x = frame.from.x + static_cast<float>((16 + i * 20) * map.scale);
    list.AddCircleFilled({x, middle}, radius, lights[i]);
  }
  const std::string title =
      fmt::format("evening.psd @ {:.4g}%", stage.driver.seen().host.zoom * 100);
  const float size = std::min(13.0F, content.from.y - frame.from.y);
  const ImVec2 extent = stage.plain->CalcTextSizeA(size, 1000, 0, title.c_str());
  list.PushClipRect(frame.from, frame.to, true);
  list.AddText(stage.plain, size,
               {(frame.from.x + frame.to.x - extent.x) / 2, middle - extent.y / 2}, kTitleText,
               title.c_str());
  list.PopClipRect();
}

/// Only the part that can be seen is drawn, because a picture at 3200 % is larger than what a
/// renderer takes.
void drawDocument(const Stage& stage, const ScreenMap& map, const Rect& content) {
  const HostState& host = stage.driver.seen().host;
  const double scale = host.zoom * map.scale;
  const double left = content.from.x + host.origin.x * map.scale;
  const double top = content.from.y + host.origin.y * map.scale;
  const double width = Picture::kWidth * scale;
  const double height = Picture::kHeight * scale;
  const auto share = [](double place, double begin, double length) {
    return static_cast<float>(std::clamp((place - begin) / length, 0.0, 1.0));
  };
  const ImVec2 first = {share(content.from.x, left, width), share(content.from.y, top, height)};
  const ImVec2 last = {share(content.to.x, left, width), share(content.to.y, top, height)};
  if (first.x >= last.x || first.y >= last.y) return;
  const auto place = [](double begin, double length, float at) {
    return static_cast<float>(begin + length * at);
  };
  ImDrawList& list = *ImGui::GetWindowDrawList();
  list.AddImage(stage.picture, {place(left, width, first.x), place(top, height, first.y)},
                {place(left, width, last.x), place(top, height, last.y)}, first, last);
}

/// A ring around the pointer for each tick, and one for a click that the host did not get.
void drawFlash(const Stage& stage, ImVec2 pointer) {
  struct Ring {
    Flash flash;
    Colour colour;
    float radius;
  };
  static constexpr Ring kRings[] = {{kZoomIn, kZoomColour, 22},        {kZoomOut, kZoomColour, 14},
                                    {kPanUp, kPanColour, 18},          {kPanDown, kPanColour, 18},
                                    {kPanLeft, kPanColour, 18},        {kPanRight, kPanColour, 18},
                                    {kClickHeldBack, kAlarmColour, 26}};
  const Driver& driver = stage.driver;
  for (const Ring& ring : kRings) {
    const double age = static_cast<double>(driver.seen().since(ring.flash, driver.time()));
    if (age >= kFlashTime) continue;
    const double fade = 1 - age / kFlashTime;
    ImGui::GetWindowDrawList()->AddCircle(pointer, ring.radius, ring.colour.shade(fade), 24, 2.5F);
  }
}

bool isWithin(const Rect& rect, ImVec2 place) {
  return rect.from.x <= place.x && place.x < rect.to.x && rect.from.y <= place.y &&
         place.y < rect.to.y;
}

/// Over the document, the pointer is a ring as large as the brush; elsewhere, and for a brush too
/// small to be seen, it is a cross.
void drawPointer(const Stage& stage, const ScreenMap& map) {
  const HostState& host = stage.driver.seen().host;
  const ImVec2 pointer = map.toWindow(stage.driver.setup().mouse);
  const Rect content = onWindow(map, host.content);
  ImDrawList& list = *ImGui::GetWindowDrawList();
  const float radius = static_cast<float>(host.brush / 2 * host.zoom * map.scale);
  if (host.hasWindow && isWithin(content, pointer) && radius >= 2) {
    const int segments = std::clamp(static_cast<int>(radius), 16, 64);
    list.PushClipRect(content.from, content.to, true);
    list.AddCircle(pointer, radius + 1, kDesk.shade(0.7), segments, 1);
    list.AddCircle(pointer, radius, kText, segments, 1);
    list.PopClipRect();
  } else {
    list.AddLine({pointer.x - 6, pointer.y}, {pointer.x + 7, pointer.y}, kText);
    list.AddLine({pointer.x, pointer.y - 6}, {pointer.x, pointer.y + 7}, kText);
  }
  drawFlash(stage, pointer);
}

void drawNote(const Stage& stage, ImVec2 from, const std::string& text, Colour colour) {
  ImDrawList& list = *ImGui::GetWindowDrawList();
  const ImVec2 size = ImGui::CalcTextSize(text.c_str());
  constexpr float kMargin = 9;
  const ImVec2 to = {from.x + size.x + 2 * kMargin, from.y + size.y + kMargin};
  fillRounded(list, from, to, kDesk.shade(0.78), 5);
  list.AddText(stage.plain, ImGui::GetFontSize(), {from.x + kMargin, from.y + kMargin / 2}, colour,
               text.c_str());
}

void drawContent(const Stage& stage, const ScreenMap& map, const Rect& content) {
  const HostState& host = stage.driver.seen().host;
  ImDrawList& list = *ImGui::GetWindowDrawList();
  list.AddRectFilled(content.from, content.to, kPasteboard);
  list.PushClipRect(content.from, content.to, true);
  drawDocument(stage, map, content);
  const std::string brush =
      host.brush > 0 ? fmt::format("brush {:.4g} px", host.brush) : "no brush";
  drawNote(stage, {content.from.x + 12, content.to.y - 38},
           fmt::format("{:.4g} %   ({:.0f}, {:.0f})   {}", host.zoom * 100, host.origin.x,
                       host.origin.y, brush),
           kText);
  if (host.isPending) {
    drawNote(stage, {content.to.x - 150, content.to.y - 38}, "waits for redraw", kWaitColour);
  }
  if (!stage.driver.isActive()) {
    list.AddRectFilled(content.from, content.to, kDesk.shade(0.5));
    drawNote(stage, {content.from.x + 12, content.from.y + 12}, "Another application is in front",
             kBrushColour);
  }
  list.PopClipRect();
}

}  // namespace

CGPoint ScreenMap::toScreen(ImVec2 place) const {
  return {(place.x - area.x) / scale, height - (place.y - area.y) / scale};
}

ImVec2 ScreenMap::toWindow(CGPoint place) const {
  return {static_cast<float>(area.x + place.x * scale),
          static_cast<float>(area.y + (height - place.y) * scale)};
}

bool ScreenMap::contains(ImVec2 place) const {
  return place.x >= area.x && place.x < area.x + area.width && place.y >= area.y &&
         place.y < area.y + area.height;
}

ScreenMap fitScreen(const Area& area, double height) {
  constexpr double kAspect = 1.6;
  const double shown = std::max(height, 1.0);
  const double scale = std::min(area.width / (shown * kAspect), area.height / shown);
  const auto width = static_cast<float>(shown * kAspect * scale);
  const auto tall = static_cast<float>(shown * scale);
  const Area screen = {area.x + (area.width - width) / 2, area.y + (area.height - tall) / 2, width,
                       tall};
  return {screen, scale, shown};
}

void drawScreen(const Stage& stage, const ScreenMap& map) {
  ImDrawList& list = *ImGui::GetWindowDrawList();
  const ImVec2 from = {map.area.x, map.area.y};
  const ImVec2 to = {from.x + map.area.width, from.y + map.area.height};
  list.PushClipRect(from, to, true);
  fillRounded(list, from, to, kDesk, 6);
  const HostState& host = stage.driver.seen().host;
  if (host.hasWindow) {
    const Rect frame = onWindow(map, host.frame);
    const Rect content = onWindow(map, host.content);
    drawTitle(stage, map, frame, content);
    drawContent(stage, map, content);
  } else {
    const char* const text =
        stage.driver.seen().isLoaded ? "The host has no window" : "No plug-in is loaded";
    const ImVec2 size = ImGui::CalcTextSize(text);
    list.AddText({(from.x + to.x - size.x) / 2, (from.y + to.y - size.y) / 2}, kFaint, text);
  }
  drawPointer(stage, map);
  list.PopClipRect();
}

}  // namespace simulator::live
