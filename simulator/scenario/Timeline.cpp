#include "simulator/scenario/Timeline.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

constexpr std::size_t kMostSlots = 1024;
constexpr std::size_t kMostColumns = 68;

constexpr std::array kBlocks = {" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
constexpr double kHighestBlock = kBlocks.size() - 1;

struct LineWords {
  const char* name;
  const char* unit;
};
constexpr std::array<LineWords, Timeline::kCounts> kCountLines = {{
    {"zoom in", "tick"},
    {"zoom out", "tick"},
    {"pan", "tick"},
    {"brush keys", "key"},
    {"waiting", nullptr},  // a share of the time
    {"held back", "click"},
}};
constexpr std::array<LineWords, Timeline::kLevels> kLevelLines = {{
    {"zoom", "%"},
    {"brush size", "px"},
}};

constexpr char kKeyToBlocks[] =
    "Each column is {}. A full block is the most of its line, a blank is nothing.\n"
    "The blocks of zoom and brush size rise from the least value to the greatest.\n";

/// The lowest block for the least amount, the highest for `most`; blank for nothing.
std::size_t blockOfAmount(std::uint64_t amount, std::uint64_t most) {
  const double share = static_cast<double>(amount) / static_cast<double>(most);
  return static_cast<std::size_t>(std::ceil(kHighestBlock * std::min(share, 1.0)));
}

/// From the lowest block for `least` to the highest for `most`. Equal ratios rise alike, because a
/// tick changes the zoom by a factor.
std::size_t blockOfLevel(double value, double least, double most) {
  const double share = most > least ? std::log(value / least) / std::log(most / least) : 0.5;
  return static_cast<std::size_t>(std::lround(1 + (kHighestBlock - 1) * share));
}

std::string timelineRow(const char* name, const std::string& blocks, const std::string& scale) {
  return fmt::format("{:11}│{}│{}\n", name, blocks, scale.empty() ? scale : " " + scale);
}

/// The least of 1, 2, 5, 10, 20, 50 ... that is not less.
std::int64_t roundedUp(std::int64_t value) {
  std::int64_t unit = 1;
  while (unit * 10 < value) unit *= 10;
  for (const std::int64_t factor : {1, 2, 5}) {
    if (unit * factor >= value) return unit * factor;
  }
  return unit * 10;
}

/// The scale of time below columns of `length` milliseconds.
std::string timeScale(std::size_t columns, std::int64_t length) {
  constexpr std::int64_t kColumnsApart = 10;
  const std::int64_t step = roundedUp(kColumnsApart * length);
  std::string scale;
  for (std::int64_t at = 0; at / length < static_cast<std::int64_t>(columns); at += step) {
    scale.resize(static_cast<std::size_t>(at / length), ' ');
    scale += secondsText(at);
  }
  return fmt::format("{:12}{}\n", "", scale);
}

}  // namespace

std::string secondsText(std::int64_t milliseconds) {
  std::string text = fmt::format("{}.{:03}", milliseconds / 1000, milliseconds % 1000);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text + " s";
}

void Timeline::merge(Slot& into, const Slot& later) {
  for (std::size_t i = 0; i < into.counts.size(); ++i) into.counts[i] += later.counts[i];
  for (std::size_t i = 0; i < into.levels.size(); ++i) {
    if (later.levels[i]) into.levels[i] = later.levels[i];
  }
}

Timeline::Slot& Timeline::slotAt(std::int64_t at) {
  while (static_cast<std::size_t>(at / slotLength_) >= kMostSlots) halve();
  const auto index = static_cast<std::size_t>(at / slotLength_);
  if (index >= slots_.size()) slots_.resize(index + 1);
  return slots_[index];
}

/// Joins the slots in pairs.
void Timeline::halve() {
  slots_ = joined(2);
  slotLength_ *= 2;
}

Timeline::Slots Timeline::joined(std::size_t slotsInOne) const {
  Slots columns((slots_.size() + slotsInOne - 1) / slotsInOne);
  for (std::size_t i = 0; i < slots_.size(); ++i) merge(columns[i / slotsInOne], slots_[i]);
  return columns;
}

void Timeline::addSpan(Count line, std::int64_t begin, std::int64_t end) {
  reach(end);
  while (begin < end) {
    const std::int64_t next = std::min((begin / slotLength_ + 1) * slotLength_, end);
    slotAt(begin).counts[line] += static_cast<std::uint64_t>(next - begin);
    begin = next;
  }
}

void Timeline::set(Level line, std::int64_t at, double value) {
  slotAt(at).levels[line] = value;
  auto& range = ranges_[line];
  if (!range) range = Range{value, value};
  *range = {std::min(range->least, value), std::max(range->most, value)};
}

std::string Timeline::countRow(Count line, const Slots& columns, std::int64_t length) const {
  std::uint64_t most = 0;
  for (const Slot& column : columns) most = std::max(most, column.counts[line]);
  const bool isTime = line == kWaiting;
  const std::uint64_t full = isTime ? static_cast<std::uint64_t>(length) : most;
  std::string blocks;
  for (const Slot& column : columns) {
    blocks += kBlocks[full == 0 ? 0 : blockOfAmount(column.counts[line], full)];
  }
  std::string scale;
  if (most > 0) {
    scale = isTime ? fmt::format("up to {:.0f} %",
                                 100.0 * static_cast<double>(most) / static_cast<double>(full))
                   : "up to " + counted(most, kCountLines[line].unit);
  }
  return timelineRow(kCountLines[line].name, blocks, scale);
}

std::string Timeline::levelRow(Level line, const Slots& columns) const {
  if (!ranges_[line]) return {};
  const auto [least, most] = *ranges_[line];
  std::string blocks;
  std::optional<double> value;
  for (const Slot& column : columns) {
    if (column.levels[line]) value = column.levels[line];
    blocks += kBlocks[value ? blockOfLevel(*value, least, most) : 0];
  }
  const std::string range =
      most > least ? fmt::format("{:.0f} to {:.0f}", least, most) : fmt::format("{:.0f}", least);
  return timelineRow(kLevelLines[line].name, blocks,
                     fmt::format("{} {}", range, kLevelLines[line].unit));
}

bool Timeline::isEmpty() const {
  return std::all_of(slots_.begin(), slots_.end(), [](const Slot& slot) {
    return std::all_of(slot.counts.begin(), slot.counts.end(), [](auto n) { return n == 0; });
  });
}

std::string Timeline::text() const {
  if (isEmpty()) return {};
  const std::size_t slotsInOne = (slots_.size() + kMostColumns - 1) / kMostColumns;
  const std::int64_t length = slotLength_ * static_cast<std::int64_t>(slotsInOne);
  const Slots columns = joined(slotsInOne);
  std::string text;
  for (std::size_t i = 0; i < kCounts; ++i) text += countRow(Count(i), columns, length);
  for (std::size_t i = 0; i < kLevels; ++i) text += levelRow(Level(i), columns);
  return text + timeScale(columns.size(), length) + fmt::format(kKeyToBlocks, secondsText(length));
}

}  // namespace simulator
