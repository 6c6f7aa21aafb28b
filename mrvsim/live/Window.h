// The live window: passes what a person does in it on to the driver, and shows what comes of it.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "mrvsim/live/Canvas.h"
#include "mrvsim/live/Devices.h"
#include "mrvsim/live/Driver.h"
#include "mrvsim/live/Picture.h"
#include "mrvsim/live/Stage.h"
#include "mrvsim/live/StatusLines.h"

namespace simulator::live {

/// Times are in nanoseconds of the driver's clock. [main-thread]
class Window {
 public:
  /// Opens the window. REQUIRES: the references outlive it. Throws `std::runtime_error`.
  Window(Driver& driver, StatusLines& status, AxisMaps maps, const std::filesystem::path& mapsFile);

  /// Takes one event of the system, which came at this time.
  void take(const SDL_Event& event, std::int64_t now);

  /// Passes on where the mouse has gone since the last call. Call it before time is advanced.
  void passMouse();

  /// Draws everything as it is now.
  void draw(std::int64_t now);

  bool isClosed() const { return isClosed_; }

  /// See `Canvas`.
  std::string picture() const { return canvas_.picture(); }

 private:
  void key(const SDL_KeyboardEvent& event, std::int64_t now);
  void mouseButton(const SDL_MouseButtonEvent& event);
  bool isScreenCovered() const;
  void paint();
  void showPaint(const PixelRect& changed);
  void layOut();

  Driver& driver_;
  StatusLines& status_;
  Canvas canvas_;
  Devices devices_;
  Widgets widgets_;
  Extras extras_;
  Picture picture_;
  Texture texture_;
  ScreenMap screen_;
  std::optional<ImVec2> mouse_;  ///< where it has gone, if that is not passed on yet
  bool isButtonDown_ = false;    ///< in the host's view
  std::uint64_t clicksPassed_ = 0;
  std::optional<CGPoint> lastPaint_;
  bool isClosed_ = false;
  int dismissed_ = 0;  ///< how often the plug-in had broken when the message was dismissed
  std::int64_t lastDrawn_ = 0;
  double frameSeconds_ = 1.0 / 60;
  double frameTime_ = 0;
};

}  // namespace simulator::live
