// What happened over time, as a picture of text: a line for each kind of thing.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// Counts and levels over time. The time is cut into slots, which become longer when the time does,
/// so a play of any length takes the same little memory. All times are virtual milliseconds from
/// the start and not negative.
class Timeline {
 public:
  /// Lines that show how much happened in each part of the time.
  enum Count { kZoomIn, kZoomOut, kPan, kBrushKeys, kWaiting, kHeldBack, kCounts };
  /// Lines that show a value as it changes. All values are greater than 0.
  enum Level { kZoom, kBrushSize, kLevels };

  /// Counts one thing at a time.
  void add(Count line, std::int64_t at) { slotAt(at).counts[line] += 1; }

  /// Counts the milliseconds from `begin` up to, but not including, `end`.
  void addSpan(Count line, std::int64_t begin, std::int64_t end);

  /// The value from `at` on.
  void set(Level line, std::int64_t at, double value);

  /// Makes the picture reach to this time.
  void reach(std::int64_t at) { slotAt(at); }

  /// The picture: lines of at most 100 columns with a scale of time and a key. Empty if there is
  /// nothing to show.
  std::string text() const;

 private:
  struct Slot {
    std::array<std::uint64_t, kCounts> counts = {};
    std::array<std::optional<double>, kLevels> levels = {};  ///< the last values set in the slot
  };
  struct Range {
    double least = 0;
    double most = 0;
  };

  using Slots = std::vector<Slot>;

  static void merge(Slot& into, const Slot& later);
  Slot& slotAt(std::int64_t at);
  void halve();
  Slots joined(std::size_t slotsInOne) const;
  bool isEmpty() const;
  std::string countRow(Count line, const Slots& columns, std::int64_t length) const;
  std::string levelRow(Level line, const Slots& columns) const;

  Slots slots_;
  std::int64_t slotLength_ = 1;  ///< milliseconds
  std::array<std::optional<Range>, kLevels> ranges_ = {};
};

/// A length of time for people, such as "60 s" or "0.25 s".
std::string secondsText(std::int64_t milliseconds);

}  // namespace simulator
