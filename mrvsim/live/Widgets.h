// The parts that the panels are made of.
#pragma once

#include <imgui.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "mrvsim/live/Theme.h"

namespace simulator::live {

/// Receives the place of each control that a person can use, in pixels of the window, every time it
/// is drawn.
using PlaceNotes = std::function<void(const std::string& name, ImVec2 from, ImVec2 to)>;

/// Fills a rectangle with round corners. Only the corners are not upright rectangles, which is much
/// less work where the processor draws.
void fillRounded(ImDrawList& list, ImVec2 from, ImVec2 to, ImU32 colour, float radius);

/// Draws named controls. [main-thread]
class Widgets {
 public:
  Widgets(ImFont* strong, PlaceNotes notes) : strong_(strong), notes_(std::move(notes)) {}

  /// The title of a group.
  void title(const char* text) const;

  /// A small explaining text.
  static void faint(const char* text);

  // Controls with their names; each returns whether it was used.
  bool button(const char* name, ImVec2 size = {0, 0}) const;
  bool checkbox(const char* name, bool& value) const;
  /// The name stands before the slider, which is as wide as the rest of the column.
  bool slider(const char* name, float& value, float least, float most, const char* format) const;
  bool number(const char* name, int& value) const;
  /// `items`: the texts to choose from.
  bool choice(const char* name, std::size_t& index, const std::vector<std::string>& items) const;

  /// Notes the place of a control that is drawn elsewhere.
  void notePlace(const std::string& name, ImVec2 from, ImVec2 to) const { notes_(name, from, to); }

  /// A bar that fills from the left, or, if `isSigned`, from the middle to both sides. `share`: -1
  /// to 1.
  static void bar(ImVec2 from, ImVec2 to, double share, bool isSigned, Colour colour);

  /// A word in a rounded field that lights up: `glow` from 0 to 1.
  static void lamp(const char* text, float width, double glow, Colour colour);

  /// Where the controls begin after their names, from the column's left edge.
  float nameWidth = 96;

 private:
  void placeOfName(const char* name) const;
  void note(const char* name) const;

  ImFont* strong_;
  PlaceNotes notes_;
};

}  // namespace simulator::live
