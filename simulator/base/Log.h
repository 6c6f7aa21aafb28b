// The log of everything that the plug-in does to its surroundings: one JSON object a line.
#pragma once

#include <nlohmann/json.hpp>

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>

namespace simulator {

/// Fields keep the order in which they were added.
using Json = nlohmann::ordered_json;

/// Collects lines in the order in which things happen and hands each to a sink.
/// All members may be called from any thread; lines of several threads never mix.
class Log {
 public:
  using Sink = std::function<void(const Json& line)>;

  /// Sends every later line to `sink`; an empty one silences the log.
  void setSink(Sink sink);

  /// Something that must come before the next line, such as text printed meanwhile. It runs before
  /// each line is written, outside the log's own lock, and may itself write lines.
  void setPrelude(std::function<void()> prelude);

  /// False where nobody listens: the caller saves itself making the fields.
  bool enabled() const { return enabled_.load(std::memory_order_relaxed); }

  /// Writes one line: `t` (virtual milliseconds), `what`, then `fields` (an object, or null for
  /// none).
  void write(std::string_view what, Json fields = nullptr);

  /// Counts a misuse of the host or the platform by the plug-in and writes its line. The count
  /// goes up also where nobody listens.
  void misuse(const std::string& text);
  int misuses() const { return misuses_.load(); }

  /// Virtual time in milliseconds; it never goes back.
  std::int64_t now() const { return now_.load(); }
  void setNow(std::int64_t milliseconds) { now_.store(milliseconds); }

 private:
  std::mutex mutex_;
  Sink sink_;
  std::function<void()> prelude_;
  std::atomic<bool> enabled_{false};
  std::atomic<int> misuses_{0};
  std::atomic<std::int64_t> now_{0};
};

/// The one log of the process; it outlives every static object.
Log& theLog();

/// A four-character code as its text where all four are printable ASCII characters, else "0x" and
/// eight hexadecimal digits.
std::string idText(std::uint32_t id);

}  // namespace simulator
