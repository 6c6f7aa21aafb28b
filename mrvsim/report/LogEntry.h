// Reads the lines of a log that was kept.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "simulator/base/Json.h"
#include "simulator/scenario/InputFile.h"
#include "simulator/scenario/Pacing.h"

namespace simulator {

/// Thrown for a line that does not belong to a log; `what` is the place in the line and the reason.
class BadLogEntry : public std::runtime_error {
 public:
  BadLogEntry(std::uint64_t column, const std::string& reason)
      : runtime_error(reason), column_(column) {}
  /// Counted in characters from 1.
  std::uint64_t column() const { return column_; }

 private:
  std::uint64_t column_;
};

/// A sample of the device as the plug-in posted it.
struct PostedSample {
  std::int64_t time = 0;  ///< virtual milliseconds
  DeviceAxes axes = {};   ///< in the order of the scenario's `axes`
};

/// The sample that a line is about, if the line has exactly the form in which the log is written.
/// Most lines are such samples, and this is many times faster than `readLogEntry`.
std::optional<PostedSample> quickSample(std::string_view text);

/// Parses a line and checks the fields that docs/scenario.md lists for its kind; more fields are
/// allowed. Throws BadLogEntry.
Json readLogEntry(std::string_view text);

/// The sample that a line is about; nullopt if it is about something else. REQUIRES: the line is
/// from `readLogEntry`.
std::optional<PostedSample> sampleIn(const Json& line);

/// Passes on each line without its end, and its number from 1. A line ends early at a byte that no
/// line may hold, and after 64 MB. Throws what `source` and `take` throw.
void eachLine(const ByteSource& source,
              const std::function<void(std::string_view text, std::uint64_t number)>& take);

}  // namespace simulator
