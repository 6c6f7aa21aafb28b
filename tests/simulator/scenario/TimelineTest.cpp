#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "simulator/scenario/Timeline.h"

namespace simulator {
namespace {

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

/// The blocks of the line that begins with `name`.
std::string blocksOf(const Timeline& timeline, const std::string& name) {
  const std::string frame = "│";
  for (const std::string& line : linesOf(timeline.text())) {
    if (!line.starts_with(name)) continue;
    const std::size_t begin = line.find(frame) + frame.size();
    return line.substr(begin, line.find(frame, begin) - begin);
  }
  return "no line " + name;
}

/// The number of characters; each counts as a column.
std::size_t widthOf(const std::string& line) {
  std::size_t width = 0;
  for (const char c : line) width += (c & 0xC0) != 0x80 ? 1 : 0;
  return width;
}

TEST(Timeline, IsEmptyTextIfNothingHappened) {
  Timeline timeline;
  timeline.set(Timeline::kZoom, 0, 100);
  timeline.reach(5000);
  EXPECT_EQ(timeline.text(), "");
}

TEST(Timeline, ShowsAmountsInEightLevels) {
  Timeline timeline;
  for (int column = 0; column <= 8; ++column) {
    for (int i = 0; i < column; ++i) timeline.add(Timeline::kPan, column);
  }
  EXPECT_EQ(blocksOf(timeline, "pan"), " ▁▂▃▄▅▆▇█");
}

TEST(Timeline, ShowsTheSmallestAmountAsALowBlock) {
  Timeline timeline;
  for (int i = 0; i < 1000; ++i) timeline.add(Timeline::kZoomIn, 1);
  timeline.add(Timeline::kZoomIn, 0);
  EXPECT_EQ(blocksOf(timeline, "zoom in"), "▁█");
}

TEST(Timeline, ShowsWaitingAsAShareOfTheTime) {
  Timeline timeline;
  timeline.addSpan(Timeline::kWaiting, 0, 340);
  timeline.reach(679);
  const std::string blocks = blocksOf(timeline, "waiting");
  EXPECT_THAT(blocks, testing::StartsWith("████"));
  EXPECT_THAT(blocks, testing::EndsWith("    "));
  EXPECT_THAT(timeline.text(), testing::HasSubstr("up to 100 %"));
}

TEST(Timeline, KeepsALevelUntilItChanges) {
  Timeline timeline;
  timeline.add(Timeline::kZoomIn, 0);
  timeline.set(Timeline::kZoom, 1, 100);
  timeline.set(Timeline::kZoom, 3, 400);
  timeline.set(Timeline::kZoom, 4, 200);
  timeline.reach(5);
  EXPECT_EQ(blocksOf(timeline, "zoom  "), " ▁▁█▅▅");
  EXPECT_THAT(timeline.text(), testing::HasSubstr("100 to 400 %"));
}

TEST(Timeline, FitsInAHundredColumnsHoweverLongItIs) {
  constexpr std::int64_t kLongest = 9223372036854;
  for (std::int64_t end = 1; end < kLongest; end = end * 3 + 1) {
    Timeline timeline;
    timeline.set(Timeline::kZoom, 0, 3200);
    timeline.set(Timeline::kBrushSize, end, 2500);
    timeline.addSpan(Timeline::kWaiting, end / 3, end / 2);
    timeline.add(Timeline::kPan, end);
    for (const std::string& line : linesOf(timeline.text())) EXPECT_LE(widthOf(line), 100U) << line;
    EXPECT_THAT(blocksOf(timeline, "pan"), testing::EndsWith("█"));
  }
}

TEST(Timeline, LosesNoCountWhenTheTimeGetsLonger) {
  Timeline timeline;
  for (std::int64_t at = 0; at < 100000; at += 50) timeline.add(Timeline::kHeldBack, at);
  timeline.reach(70000000);
  EXPECT_THAT(timeline.text(), testing::HasSubstr("up to 2000 clicks"));
}

TEST(Timeline, MarksRoundTimesWhereTheyAre) {
  Timeline timeline;
  timeline.add(Timeline::kPan, 33);
  const auto lines = linesOf(timeline.text());
  const std::string& scale = lines[lines.size() - 3];
  EXPECT_EQ(scale.find("0 s"), 12U);
  EXPECT_EQ(scale.find("0.01 s"), 22U);
  EXPECT_EQ(scale.find("0.03 s"), 42U);
}

TEST(SecondsText, HasAsManyPlacesAsNeeded) {
  EXPECT_EQ(secondsText(0), "0 s");
  EXPECT_EQ(secondsText(60000), "60 s");
  EXPECT_EQ(secondsText(20), "0.02 s");
  EXPECT_EQ(secondsText(3599999), "3599.999 s");
}

}  // namespace
}  // namespace simulator
