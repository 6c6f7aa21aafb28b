// Sums up a played scenario for people.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "simulator/base/Log.h"
#include "simulator/scenario/Pacing.h"
#include "simulator/scenario/Player.h"
#include "simulator/scenario/Timeline.h"

namespace simulator {

/// Listens to the log and the player, and sums up how the plug-in handled the device's motion. Its
/// memory does not grow with the length of the scenario.
class Summary : public PlayerObserver {
 public:
  /// `brush`: its diameter at the start; nullopt: the tool has none.
  explicit Summary(std::optional<double> brush = std::nullopt);

  void message(const DeviceMessage& message, bool active, bool pending) override;
  void redrawn() override;

  /// Takes one line of the log.
  void line(const LogLine& line);

  /// Takes the player's line about motion that did not reach the plug-in; empty if there is none.
  void lostMotion(std::string line) { lostMotion_ = std::move(line); }

  /// The summary, as lines of text: a sentence, a picture of the time and the counts.
  std::string text() const;

 private:
  static constexpr std::size_t kKinds = 4;
  static std::size_t index(MotionKind kind) { return static_cast<std::size_t>(kind); }

  /// The least and the greatest value, and the last.
  struct Range {
    double first = 0, least = 0, most = 0, last = 0;
    void take(double value);
  };

  static std::string rangeText(const Range& range, const char* unit);

  void sample(MotionKind kind, bool pending);
  void wheel(int vertical, bool sideways);
  void reach(const LogLine& line);
  void posted(const LogLine& line);
  void brushKey(std::uint64_t key, bool down);
  void key(std::pair<bool, std::uint64_t> which, bool down);
  void click(bool passed);
  void misuse(const std::string& text);
  void view(const LogLine& line);
  void brushSize(double size);
  void endWait();

  std::uint64_t samplesOf(MotionKind kind) const { return samples_[index(kind)]; }
  std::uint64_t sampleCount() const;
  std::string motionTime() const;
  std::string verdict() const;
  std::string whatHappened() const;
  std::string whatWentWrong() const;
  std::string deviceLine() const;
  std::string zoomLine() const;
  std::string panLine() const;
  std::string brushLine() const;
  std::string waitLines() const;
  std::string clickLine() const;
  std::string misuseLines() const;

  std::array<std::uint64_t, kKinds> samples_ = {};
  std::uint64_t inBackground_ = 0;
  std::uint64_t otherMessages_ = 0;
  std::int64_t firstSample_ = 0, lastSample_ = 0;
  std::uint64_t zoomIn_ = 0, zoomOut_ = 0, vertical_ = 0, horizontal_ = 0;
  std::uint64_t brushKeys_ = 0;
  std::set<std::pair<bool, std::uint64_t>> keysDown_;  ///< whether it is a brush key, and its code
  std::uint64_t clicks_ = 0, clicksHeldBack_ = 0;
  std::uint64_t misuses_ = 0;
  std::vector<std::string> firstMisuses_;
  std::string lostMotion_;

  std::uint64_t dropped_ = 0;
  WaitCounter wait_;
  std::optional<std::int64_t> waitingSince_;
  std::int64_t longestWait_ = 0;
  std::uint64_t waits_ = 0;

  std::int64_t now_ = 0;
  bool viewChanged_ = false;
  Range zoom_;
  std::array<double, 2> origin_ = {};
  std::optional<Range> brush_;
  Timeline timeline_;
};

}  // namespace simulator
