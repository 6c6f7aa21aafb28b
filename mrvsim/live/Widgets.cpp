#include "mrvsim/live/Widgets.h"

#include <algorithm>
#include <cmath>

namespace simulator::live {

void fillRounded(ImDrawList& list, ImVec2 from, ImVec2 to, ImU32 colour, float radius) {
  from = {std::round(from.x), std::round(from.y)};
  to = {std::round(to.x), std::round(to.y)};
  const float round = std::floor(std::min({radius, (to.x - from.x) / 2, (to.y - from.y) / 2}));
  if (round < 1) return list.AddRectFilled(from, to, colour);
  list.AddRectFilled({from.x + round, from.y}, {to.x - round, from.y + round}, colour);
  list.AddRectFilled({from.x, from.y + round}, {to.x, to.y - round}, colour);
  list.AddRectFilled({from.x + round, to.y - round}, {to.x - round, to.y}, colour);
  // Soft edges would leave seams between the corners and the rest.
  const ImDrawListFlags flags = list.Flags;
  list.Flags &= ~ImDrawListFlags_AntiAliasedFill;
  const auto corner = [&](float x, float y, int begin) {
    list.PathLineTo({x, y});
    list.PathArcToFast({x, y}, round, begin, begin + 3);
    list.PathFillConvex(colour);
  };
  corner(to.x - round, to.y - round, 0);
  corner(from.x + round, to.y - round, 3);
  corner(from.x + round, from.y + round, 6);
  corner(to.x - round, from.y + round, 9);
  list.Flags = flags;
}

void Widgets::title(const char* text) const {
  ImGui::PushFont(strong_);
  ImGui::TextUnformatted(text);
  ImGui::PopFont();
}

void Widgets::faint(const char* text) {
  ImGui::PushStyleColor(ImGuiCol_Text, kFaint.shade());
  ImGui::TextUnformatted(text);
  ImGui::PopStyleColor();
}

void Widgets::note(const char* name) const {
  notes_(name, ImGui::GetItemRectMin(), ImGui::GetItemRectMax());
}

void Widgets::placeOfName(const char* name) const {
  const float left = ImGui::GetCursorPosX();
  ImGui::AlignTextToFramePadding();
  ImGui::TextUnformatted(name);
  ImGui::SameLine(left + nameWidth);
  ImGui::SetNextItemWidth(-1);
}

bool Widgets::button(const char* name, ImVec2 size) const {
  const bool used = ImGui::Button(name, size);
  note(name);
  return used;
}

bool Widgets::checkbox(const char* name, bool& value) const {
  const bool used = ImGui::Checkbox(name, &value);
  note(name);
  return used;
}

bool Widgets::slider(const char* name, float& value, float least, float most,
                     const char* format) const {
  placeOfName(name);
  ImGui::PushID(name);
  const bool used =
      ImGui::SliderFloat("##", &value, least, most, format, ImGuiSliderFlags_AlwaysClamp);
  ImGui::PopID();
  note(name);
  return used;
}

bool Widgets::number(const char* name, int& value) const {
  placeOfName(name);
  ImGui::PushID(name);
  const bool used = ImGui::InputInt("##", &value, 0, 0);
  ImGui::PopID();
  note(name);
  return used;
}

bool Widgets::choice(const char* name, std::size_t& index,
                     const std::vector<std::string>& items) const {
  placeOfName(name);
  ImGui::PushID(name);
  const bool isOpen = ImGui::BeginCombo("##", items[index].c_str());
  note(name);
  bool used = false;
  for (std::size_t i = 0; isOpen && i < items.size(); ++i) {
    if (ImGui::Selectable(items[i].c_str(), i == index)) {
      used = index != i;
      index = i;
    }
    note((std::string(name) + ": " + items[i]).c_str());
  }
  if (isOpen) ImGui::EndCombo();
  ImGui::PopID();
  return used;
}

void Widgets::bar(ImVec2 from, ImVec2 to, double share, bool isSigned, Colour colour) {
  ImDrawList& list = *ImGui::GetWindowDrawList();
  list.AddRectFilled(from, to, kTrough);
  const float filled = static_cast<float>(std::clamp(share, -1.0, 1.0));
  const float width = to.x - from.x;
  const float begin = std::round(isSigned ? from.x + width / 2 : from.x);
  const float end = std::round(begin + filled * (isSigned ? width / 2 : width));
  if (begin != end) {
    list.AddRectFilled({std::min(begin, end), from.y}, {std::max(begin, end), to.y}, colour);
  }
  if (isSigned) list.AddRectFilled({begin, from.y - 2}, {begin + 1, to.y + 2}, kFaint);
}

void Widgets::lamp(const char* text, float width, double glow, Colour colour) {
  const ImVec2 from = ImGui::GetCursorScreenPos();
  const float height = ImGui::GetFrameHeight();
  const ImVec2 to = {from.x + width, from.y + height};
  ImDrawList& list = *ImGui::GetWindowDrawList();
  constexpr float kRounding = 4;
  fillRounded(list, from, to, kTrough, kRounding);
  if (glow > 0) fillRounded(list, from, to, colour.shade(glow), kRounding);
  const ImVec2 size = ImGui::CalcTextSize(text);
  const ImU32 ink = glow > 0.5 ? kBackground.shade() : glow > 0 ? kText.shade() : kFaint.shade();
  list.AddText({from.x + (width - size.x) / 2, from.y + (height - size.y) / 2}, ink, text);
  ImGui::Dummy({width, height});
}

}  // namespace simulator::live
