#include "mrvsim/ProgressBar.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace simulator {

namespace {

constexpr std::uint64_t kWidth = 40;
constexpr auto kPatience = std::chrono::milliseconds(500);
constexpr auto kInterval = std::chrono::milliseconds(100);
constexpr const char* kStartOfClearedLine = "\r\x1B[K";

}  // namespace

std::string progressLine(const std::string& what, std::uint64_t done, std::uint64_t total) {
  const double part =
      total == 0 ? 1.0 : static_cast<double>(std::min(done, total)) / static_cast<double>(total);
  const auto filled = static_cast<std::size_t>(part * kWidth);
  return fmt::format("{} [{:<{}}] {:3.0f} %", what, std::string(filled, '#'), kWidth, part * 100);
}

ProgressBar::ProgressBar(std::string what, std::uint64_t total, bool wanted)
    : what_(std::move(what)),
      total_(total),
      shown_(wanted && isatty(STDERR_FILENO) != 0),
      next_(Clock::now() + kPatience) {}

ProgressBar::~ProgressBar() { clear(); }

void ProgressBar::clear() {
  if (drawn_) std::fputs(kStartOfClearedLine, stderr);
  drawn_ = false;
}

void ProgressBar::update(std::uint64_t done) {
  if (!shown_ || Clock::now() < next_) return;
  next_ = Clock::now() + kInterval;
  drawn_ = true;
  std::fputs((kStartOfClearedLine + progressLine(what_, done, total_)).c_str(), stderr);
}

}  // namespace simulator
