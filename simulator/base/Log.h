// The log of everything that the plug-in does to its surroundings: one JSON object per line.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "simulator/base/JsonText.h"

namespace simulator {

/// A member of a line, after `t` and `what`. The name needs no escapes in JSON.
struct LogField {
  std::string_view name;
  JsonValue value;
};

/// A line on its way to the sink, which must not keep it.
class LogLine {
 public:
  LogLine(std::string_view what, std::string_view text) : what_(what), text_(text) {}
  LogLine(std::string_view what, const Json& object) : what_(what), object_(&object) {}

  std::string_view what() const { return what_; }

  /// Whether a line that was written with fields has this member, given as JSON text without white
  /// space: "class":"keyb".
  bool has(std::string_view member) const { return text_.find(member) != text_.npos; }

  /// Whether the first member after `what` is this one.
  bool beginsWith(std::string_view member) const;

  /// The whole number that stands after `start` in such a line; 0 if `start` is not there.
  std::uint64_t numberAfter(std::string_view start) const;

  /// Reads the numbers that stand after `start` in such a line, with commas between them, into
  /// `numbers`. Returns how many there are, at most as many as fit.
  std::size_t numbersAfter(std::string_view start, std::span<double> numbers) const;

  /// Appends the line as JSON text, without an end of line.
  void appendTo(std::string& text) const;

  Json json() const;
  operator Json() const { return json(); }

 private:
  std::string_view what_;
  std::string_view text_;
  const Json* object_ = nullptr;  ///< null: the line is in `text_`
};

/// Passes lines to a sink in the order in which they are written. Lines written by several threads
/// do not interleave. [any-thread]
class Log {
 public:
  using Sink = std::function<void(const LogLine& line)>;

  /// Sends every later line to `sink`; an empty function silences the log.
  void setSink(Sink sink);

  /// Sets a function that runs before each line, for example to log text that was printed since the
  /// last line. It runs without the log's lock held and may write lines.
  void setPrelude(std::function<void()> prelude);

  /// False if no sink is set; callers can then skip building fields.
  bool enabled() const { return enabled_.load(std::memory_order_relaxed); }

  /// Writes one line: `t` (virtual milliseconds), `what`, then the fields.
  void write(std::string_view what, std::initializer_list<LogField> fields);

  /// The same with the members of an object.
  void writeObject(std::string_view what, const Json& fields);

  /// Counts a misuse of the host or the platform by the plug-in and writes a line about it. Misuses
  /// are counted even if no sink is set.
  void misuse(const std::string& text);
  int misuses() const { return misuses_.load(); }

  /// Virtual time in milliseconds; it never decreases.
  std::int64_t now() const { return now_.load(); }
  void setNow(std::int64_t milliseconds) { now_.store(milliseconds); }

 private:
  void runPrelude();

  std::mutex mutex_;
  Sink sink_;
  std::string text_;  ///< of the line that is being written
  std::function<void()> prelude_;
  std::atomic<bool> enabled_{false};
  std::atomic<int> misuses_{0};
  std::atomic<std::int64_t> now_{0};
};

/// The log of this process. Never destroyed, so static destructors may use it. [any-thread]
Log& theLog();

/// A four-character code as text: its four characters if all are printable ASCII, otherwise "0x"
/// and eight hexadecimal digits. [any-thread]
std::string idText(std::uint32_t id);

/// The four characters of a code if all are letters and digits. [any-thread]
using IdText = std::array<char, 4>;
std::optional<IdText> plainId(std::uint32_t id);

/// Appends `idText` as a JSON string. [any-thread]
void appendId(std::string& to, std::uint32_t id);

}  // namespace simulator
