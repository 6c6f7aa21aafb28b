// What the window shows of the plug-in's doings: made from the messages of its process.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <set>
#include <string>
#include <string_view>

#include "mrvsim/live/Latency.h"
#include "mrvsim/live/PluginProcess.h"
#include "simulator/base/Json.h"

namespace simulator::live {

/// The things that light up for a moment when they happen.
enum Flash {
  kZoomIn,
  kZoomOut,
  kPanUp,
  kPanDown,
  kPanLeft,
  kPanRight,
  kBrushLarger,
  kBrushSmaller,
  kClickHeldBack,
  kClickPassed,
  kRedrawn,
  kFlashes
};

/// A thing that happened, for the strip of time: which, and when, in virtual milliseconds.
struct Happening {
  Flash flash;
  std::int64_t at;
};

/// [main-thread]
class Seen {
 public:
  /// How long happenings are kept, in milliseconds.
  static constexpr std::int64_t kRemembered = 10000;

  Seen();

  /// Forgets what belongs to the plug-in that has ended, but not the latencies.
  void startAnew();

  /// Takes a message. `now`: the virtual time in milliseconds, for what does not carry its own.
  void receive(char kind, std::string_view text, std::int64_t now);

  HostState host;
  bool isLoaded = false;
  std::string lastBreakdown;  ///< how a plug-in broke last; empty: none has
  int breakdowns = 0;
  Latency latency;
  std::deque<std::string> lines;     ///< the latest lines of the log for people
  std::deque<Happening> happenings;  ///< of the last ten seconds
  std::array<std::uint64_t, kFlashes> counts = {};
  std::uint64_t misuses = 0;

  /// The modifier keys that the plug-in holds, by their virtual key codes.
  const std::set<int>& keysHeld() const { return keysHeld_; }

  /// Milliseconds since it last happened; a large number if it never has.
  std::int64_t since(Flash flash, std::int64_t now) const;

  /// Milliseconds since the plug-in last pressed the modifier key.
  std::int64_t sinceKey(int key, std::int64_t now) const;

 private:
  void state(std::string_view bytes, std::int64_t now);
  void line(std::string_view text);
  void wheel(const Json& line);
  void view(const Json& line);
  void key(const Json& line);
  void happened(Flash flash, std::int64_t at);

  double brush_ = -1;  ///< the last known diameter; negative: none
  std::array<std::int64_t, kFlashes> last_;
  std::array<std::int64_t, 128> lastKey_;
  std::set<int> keysHeld_;
};

}  // namespace simulator::live
