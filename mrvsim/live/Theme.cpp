#include "mrvsim/live/Theme.h"

namespace simulator::live {

void applyTheme() {
  ImGui::StyleColorsDark();
  ImGuiStyle& style = ImGui::GetStyle();
  style.WindowRounding = style.ChildRounding = 0;
  style.FrameRounding = style.GrabRounding = style.PopupRounding = 4;
  // Lines out of the font's texture are slow where the processor draws.
  style.AntiAliasedLinesUseTex = false;
  style.WindowBorderSize = 0;
  style.WindowPadding = {16, 12};
  style.FramePadding = {9, 4};
  style.ItemSpacing = {8, 7};
  style.ItemInnerSpacing = {7, 5};
  style.GrabMinSize = 12;
  style.ScrollbarSize = 11;
  const auto set = [&](ImGuiCol which, ImU32 colour) {
    style.Colors[which] = ImGui::ColorConvertU32ToFloat4(colour);
  };
  set(ImGuiCol_WindowBg, kPanel);
  set(ImGuiCol_PopupBg, Colour{38, 42, 50});
  set(ImGuiCol_Text, kText);
  set(ImGuiCol_TextDisabled, kFaint);
  set(ImGuiCol_Separator, kLine);
  set(ImGuiCol_Border, kLine);
  set(ImGuiCol_FrameBg, kTrough);
  set(ImGuiCol_FrameBgHovered, Colour{52, 57, 68});
  set(ImGuiCol_FrameBgActive, Colour{58, 64, 76});
  set(ImGuiCol_Button, Colour{52, 58, 70});
  set(ImGuiCol_ButtonHovered, Colour{66, 74, 90});
  set(ImGuiCol_ButtonActive, Colour{80, 92, 114});
  set(ImGuiCol_Header, Colour{52, 60, 76});
  set(ImGuiCol_HeaderHovered, Colour{64, 74, 94});
  set(ImGuiCol_HeaderActive, Colour{74, 88, 112});
  set(ImGuiCol_SliderGrab, Colour{120, 152, 205});
  set(ImGuiCol_SliderGrabActive, kZoomColour);
  set(ImGuiCol_CheckMark, kZoomColour);
  set(ImGuiCol_ScrollbarBg, kPanel);
}

}  // namespace simulator::live
