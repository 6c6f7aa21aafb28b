#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "simulator/base/Log.h"
#include "simulator/scenario/Summary.h"
#include "tests/support/Build.h"

namespace simulator {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Feeds a summary as the player and the log do.
class Course {
 public:
  explicit Course(std::optional<double> brush = std::nullopt) : summary_(brush) {}

  void sample(std::int64_t at, std::array<std::int16_t, 6> axes, bool active = true) {
    theLog().setNow(at);
    summary_.message({.type = 0, .client = {}, .axes = axes}, active, false);
  }
  void tick(std::int64_t at, int units) {
    theLog().setNow(at);
    line({{"t", at}, {"what", "wheel"}, {"wheels", {units}}, {"flags", 0x80000}});
  }
  void redrawn(std::int64_t at) {
    theLog().setNow(at);
    summary_.redrawn();
  }
  void line(const Json& line) {
    const std::string text = line.dump();
    summary_.line({line["what"].get_ref<const std::string&>(), std::string_view(text)});
  }

  Summary& summary() { return summary_; }
  std::string text() const { return summary_.text(); }

 private:
  Summary summary_;
};

Json modifierKey(int key, bool down) {
  return {{"t", 0}, {"what", "key"}, {"key", key}, {"down", down}};
}

Json brushKey(int kind) {
  return {{"t", 0},
          {"what", "posted"},
          {"class", "keyb"},
          {"kind", kind},
          {"parameters", {{"kcod", "magn", 30}, {"kchr", "TEXT", 0}}}};
}

TEST(Summary, BeginsWithWhatCameOfTheMotion) {
  Course course;
  course.sample(1000, {0, 50, 0, 0, 0, 0});
  course.tick(1000, 1);
  course.redrawn(1100);
  course.sample(13499, {9, 0, 0, 0, 0, 0});
  course.tick(13499, -8);
  course.line(brushKey(1));
  course.line(brushKey(3));
  EXPECT_THAT(course.text(), StartsWith("12 s of motion: 1 zoom tick, 1 pan tick, 1 brush key; "
                                        "nothing leaked, no key left down.\n"));
}

TEST(Summary, SaysIfTheDeviceDidNotMove) {
  EXPECT_THAT(Course().text(), StartsWith("The device did not move; nothing leaked"));
}

TEST(Summary, SaysIfNothingCameOfTheMotion) {
  Course course;
  course.sample(5, {0, 1, 0, 0, 0, 0});
  course.sample(255, {0, 1, 0, 0, 0, 0});
  EXPECT_THAT(course.text(), StartsWith("0.25 s of motion: nothing came of it; "));
}

TEST(Summary, BeginsWithMotionThatWasLost) {
  Course course;
  course.sample(5, {0, 1, 0, 0, 0, 0});
  course.summary().lostMotion("no motion reached the plug-in (1 sample): it was ill");
  EXPECT_THAT(course.text(),
              StartsWith("No motion reached the plug-in (1 sample): it was ill; nothing leaked"));
}

TEST(Summary, CountsKeysThatAreLeftDown) {
  Course course;
  course.line(modifierKey(58, true));
  course.line(modifierKey(55, true));
  course.line(modifierKey(58, false));
  EXPECT_THAT(course.text(), HasSubstr("nothing leaked, 1 key left down."));
  course.line(brushKey(1));
  EXPECT_THAT(course.text(), HasSubstr("2 keys left down."));
}

TEST(Summary, NamesTheFirstMisusesAndCountsAll) {
  Course course;
  for (int i = 1; i <= 7; ++i) {
    course.line({{"t", 0}, {"what", "misuse"}, {"text", "object " + std::to_string(i)}});
  }
  EXPECT_THAT(course.text(), HasSubstr("; 7 misuses of the host or the system, no key left down."));
  EXPECT_THAT(course.text(), HasSubstr("Misuses     object 1\n            object 2\n"));
  EXPECT_THAT(course.text(), HasSubstr("object 5\n            and 2 more; the log has them all\n"));
  EXPECT_THAT(course.text(), Not(HasSubstr("object 6")));
}

TEST(Summary, CountsSamplesByTheirStrongestMotion) {
  Course course;
  course.sample(0, {0, -50, 49, 0, 0, 0});
  course.sample(1, {0, 0, -50, 0, 49, 0});
  course.sample(2, {50, 0, 0, 0, 0, 0});
  course.sample(3, {0, 0, 0, 0, 50, 0});
  course.sample(4, {0, 0, 0, 50, 0, 50});
  course.sample(5, {0, 50, 0, 0, 0, 0}, false);
  EXPECT_THAT(course.text(),
              HasSubstr("Device      6 samples: 1 push or pull, 2 slide, 1 twist, 1 at rest\n"
                        "            1 sample while the host was in the background\n"));
}

TEST(Summary, MeasuresTheLongestWaitForARedraw) {
  Course course;
  course.tick(0, 1);
  course.redrawn(40);
  course.tick(100, 1);
  course.sample(110, {0, 50, 0, 0, 0, 0});
  course.redrawn(175);
  EXPECT_THAT(course.text(), HasSubstr("Waiting     2 times for the host to redraw after a tick, "
                                       "the longest 0.075 s\n            1 sample without effect"));
}

TEST(Summary, TakesATickDuringAWaitAsPartOfIt) {
  Course course;
  course.tick(0, 1);
  course.tick(50, 1);
  course.redrawn(60);
  EXPECT_THAT(course.text(), HasSubstr("Waiting     1 time for the host to redraw after a tick, "
                                       "the longest 0.06 s\n"));
}

TEST(Summary, EndsAWaitAfterFiftyOneSamples) {
  Course course;
  course.tick(0, 1);
  for (int at = 1; at <= 60; ++at) course.sample(at, {0, 50, 0, 0, 0, 0});
  EXPECT_THAT(course.text(),
              HasSubstr("the longest 0.051 s\n            51 samples without effect"));
}

TEST(Summary, ShowsAWaitThatHasNotEnded) {
  Course course;
  course.tick(0, 1);
  course.sample(60, {0, 0, 0, 0, 0, 0});
  EXPECT_THAT(course.text(), HasSubstr("waiting    │████"));
}

TEST(Summary, ShowsZoomAndBrushFromTheStartToTheEnd) {
  Course course(13);
  const auto view = [&](int at, double zoom, double brush) {
    course.line(
        {{"t", at}, {"what", "view"}, {"zoom", zoom}, {"origin", {3, -4}}, {"brush", brush}});
  };
  course.tick(0, 1);
  view(0, 2, 13);
  view(1, 0.5, 20);
  view(2, 1.5, 9);
  EXPECT_THAT(course.text(), HasSubstr("100 % at first, from 50 to 200, 150 at the end\n"));
  EXPECT_THAT(course.text(), HasSubstr("13 px at first, from 9 to 20, 9 at the end\n"));
  EXPECT_THAT(course.text(), HasSubstr("the view's corner ends at (3, -4)\n"));
}

TEST(Summary, CountsClicksThatWereHeldBack) {
  Course course;
  course.line({{"t", 1}, {"what", "click"}, {"kind", "down"}, {"passed", false}});
  course.line({{"t", 1}, {"what", "click"}, {"kind", "up"}, {"passed", true}});
  EXPECT_THAT(course.text(),
              HasSubstr("Clicks      1 of 2 held back from the host during a pan\n"));
  course.sample(2, {1, 0, 0, 0, 0, 0});
  EXPECT_THAT(course.text(), StartsWith("A moment of motion: 1 click held back; "));
}

TEST(Summary, StaysShortAfterAnHour) {
  Course course;
  constexpr std::int64_t kStep = testing_support::kSanitized ? 1000 : 100;
  for (std::int64_t at = 0; at <= 3600000; at += kStep) {
    course.sample(at, {0, 50, 0, 0, 0, 0});
    course.tick(at, at % (2 * kStep) == 0 ? 1 : -1);
    course.redrawn(at + kStep / 2);
  }
  const std::string ticks = testing_support::kSanitized ? "3601" : "36001";
  EXPECT_THAT(course.text(), StartsWith("3600 s of motion: " + ticks + " zoom ticks; "));
  EXPECT_LT(course.text().size(), 4096U);
}

}  // namespace
}  // namespace simulator
