// What the parts of the window share.
#pragma once

#include <SDL.h>
#include <imgui.h>

#include <filesystem>
#include <string>

#include "mrvsim/live/AxisMap.h"
#include "mrvsim/live/Devices.h"
#include "mrvsim/live/Driver.h"
#include "mrvsim/live/Picture.h"
#include "mrvsim/live/Widgets.h"

namespace simulator::live {

/// Lengths on the window, in pixels.
struct Area {
  float x = 0, y = 0, width = 0, height = 0;
};

struct Stage {
  Driver& driver;
  Devices& devices;
  const Widgets& widgets;
  ImFont* plain = nullptr;
  ImFont* strong = nullptr;
  ImFont* large = nullptr;
  ImFont* fixed = nullptr;
  SDL_Texture* picture = nullptr;
  double framesPerSecond = 0;
  double frameTime = 0;  ///< milliseconds that drawing one picture takes
};

/// Where the simulated screen lies on the window.
struct ScreenMap {
  Area area;
  double scale = 1;
  double height = 900;  ///< of the screen, in points

  /// A place on the window as a place on the screen, whose y grows upward.
  CGPoint toScreen(ImVec2 place) const;
  ImVec2 toWindow(CGPoint place) const;

  /// Whether a place on the window lies on the screen.
  bool contains(ImVec2 place) const;
};

/// The largest picture of a screen of this height, 16 to 10, in the middle of the area.
ScreenMap fitScreen(const Area& area, double height);

/// Draws the screen with the host's window and the document.
void drawScreen(const Stage& stage, const ScreenMap& map);

/// The bar at the top: what calls and plugs, and how the plug-in is.
void drawTopBar(const Stage& stage, const Area& area);

/// The panel of motion: the cap, the six axes, the thresholds, what lights up.
void drawMotion(const Stage& stage, const Area& area);

/// The panel of the host: the redraw delay, the window, the preference, the tool, the layout.
void drawHost(const Stage& stage, const Area& area);

/// The panel of faults to inject and of devices with their axes.
class Extras {
 public:
  /// `mapsFile`: where changed axes are saved; empty: nowhere.
  explicit Extras(std::filesystem::path mapsFile);

  void draw(const Stage& stage, const Area& area);

 private:
  void drawFaults(const Stage& stage);
  void drawDevices(const Stage& stage);
  void drawMap(const Stage& stage, std::size_t joystick);
  void save(const Devices& devices);

  std::filesystem::path mapsFile_;
  std::string problem_;
  std::vector<std::string> procedures_;
  std::size_t procedure_ = 0;
  int error_ = -1715;
  int after_ = 0;
  int times_ = 1;
};

/// The panel of the log's last lines.
void drawLog(const Stage& stage, const Area& area);

/// The message about a plug-in that broke, over the screen. Returns whether it was dismissed.
bool drawBreakdown(const Stage& stage, const Area& area);

/// Begins a part of the window that stays where it is; ends with `ImGui::End`. `flags`: further
/// ones.
void beginPart(const char* name, const Area& area, ImGuiWindowFlags flags = 0);

}  // namespace simulator::live
