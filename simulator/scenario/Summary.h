// Summarises a played scenario.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "simulator/base/Log.h"
#include "simulator/scenario/Player.h"

namespace simulator {

/// Listens to the log and the player, and summarises how the plug-in handled the device's motion.
class Summary : public PlayerObserver {
 public:
  void message(const DeviceMessage& message, bool active, bool pending) override;
  void redrawn() override;

  /// Takes one line of the log.
  void line(const Json& line);

  /// Takes the player's line about motion that did not reach the plug-in; empty if there is none.
  void lostMotion(std::string line) { lostMotion_ = std::move(line); }

  /// The summary, as lines of text.
  std::string text() const;

 private:
  enum Kind { kRest, kBrush, kZoom, kPan, kKinds };
  static Kind kindOf(const DeviceMessage& message, bool active);

  void sample(Kind kind, bool pending);
  void wheel(const Json& line);
  void brushSize(double size);
  void endWait();

  std::uint64_t samples_[kKinds] = {};
  std::uint64_t inBackground_ = 0;
  std::uint64_t otherMessages_ = 0;
  std::uint64_t dropped_ = 0;
  std::uint64_t zoomIn_ = 0, zoomOut_ = 0, vertical_ = 0, horizontal_ = 0;
  std::uint64_t keysTyped_ = 0;
  std::uint64_t clicks_ = 0, clicksHeldBack_ = 0;
  std::uint64_t misuses_ = 0;
  int wait_ = 0;  ///< 0: the next sample acts; else the samples of the wait, counted from 1
  std::optional<std::int64_t> waitingSince_;
  std::int64_t longestWait_ = 0;
  std::int64_t now_ = 0;
  std::string lostMotion_;
  Json view_;
  std::vector<std::pair<std::int64_t, double>> brushSizes_;
};

}  // namespace simulator
