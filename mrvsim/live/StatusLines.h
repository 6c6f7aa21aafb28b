// Says on a file or a pipe what goes on in the window, for programs that drive it.
#pragma once

#include <imgui.h>

#include <array>
#include <map>
#include <string>

#include "mrvsim/live/Seen.h"
#include "simulator/base/Json.h"
#include "simulator/scenario/InputFile.h"

namespace simulator::live {

/// One JSON object a line:
///
///     {"place": "Shutdown", "at": [x, y, width, height]}   a control is there, or has moved
///     {"drawn": 1}                                         a picture was shown with new places
///     {"step": {"at": 12, "axes": [0, 9, 0, 0, 0, 0]}}     a step was taken
///     {"view": {"zoom": 1.1, "origin": [0, 0], "brush": 13}}
///     {"connected": true}                                  the plug-in receives the device's
///     messages
///     {"broke": "..."}                                     the plug-in broke
///
/// [main-thread]
class StatusLines {
 public:
  /// An empty name: nothing is written. Waits for the reader of a pipe. Throws
  /// `std::runtime_error` with one line.
  explicit StatusLines(const std::string& file);

  void place(const std::string& name, ImVec2 from, ImVec2 to);
  void drawn();
  void step(const Json& step) { write({{"step", step}}); }
  void seen(const Seen& seen);

 private:
  void write(const Json& line);

  OpenFile file_;
  std::map<std::string, std::array<int, 4>> places_;
  bool hasNewPlaces_ = false;
  std::uint64_t drawn_ = 0;
  Json view_;
  bool isConnected_ = false;
  int breakdowns_ = 0;
};

}  // namespace simulator::live
