// The report: one HTML page that shows what a log holds, made from the log alone.
#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <string_view>

#include "mrvsim/report/Recording.h"

namespace simulator {

/// Takes a log line by line and writes the page. The same lines give the same bytes. Between the
/// two it holds about twelve bytes for each line. [main-thread]
class Report {
 public:
  /// Takes the next line, without its end. Time that goes back begins another play. Throws
  /// BadLogEntry.
  void line(std::string_view text);

  /// Passes on the page, piece by piece. No line may follow. Throws what `out` throws.
  void write(const std::function<void(std::string_view)>& out);

 private:
  Recording& recordingAt(std::int64_t time);

  std::list<Recording> plays_;
  std::int64_t number_ = 0;  ///< of the last line
  std::int64_t time_ = 0;
};

}  // namespace simulator
