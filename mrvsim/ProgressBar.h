// A progress bar for long work.
#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>

namespace simulator {

/// The line that shows how much of the work is done.
std::string progressLine(const std::string& what, std::uint64_t done, std::uint64_t total);

/// Draws the line on standard error and replaces it as the work goes on, if standard error is a
/// terminal and the work takes longer than half a second. The destructor clears the line.
class ProgressBar {
 public:
  ProgressBar(std::string what, std::uint64_t total, bool wanted);
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void update(std::uint64_t done);

  /// Clears the line, before something else is written to standard error.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  std::string what_;
  std::uint64_t total_;
  bool shown_;          ///< if the work takes long
  bool drawn_ = false;  ///< there is a line to clear
  Clock::time_point next_;
};

}  // namespace simulator
