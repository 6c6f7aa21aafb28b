#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulator/scenario/LogText.h"

namespace simulator {
namespace {

TEST(LogText, PutsTimeKindAndWordsInColumns) {
  const Json line = {{"t", 61234}, {"what", "click"}, {"kind", "down"}, {"passed", false}};
  EXPECT_EQ(logText(line, false), "    61.234 s  click            down, held back\n");
}

TEST(LogText, ColoursEachKindOnATerminal) {
  const Json view = {
      {"t", 0}, {"what", "view"}, {"zoom", 1.1}, {"origin", {-40, -30.25}}, {"brush", nullptr}};
  EXPECT_EQ(logText(view, true),
            "\x1B[32m     0.000 s  view             zoom 110.0 %, corner (-40.0, -30.2), brush "
            "none\x1B[0m\n");
  const Json result = {{"t", 0}, {"what", "result"}, {"value", 0}};
  EXPECT_EQ(logText(result, true), logText(result, false));
}

TEST(LogText, ColoursFailuresAndMisusesRed) {
  const Json refused = {{"t", 0},      {"what", "suite"}, {"do", "acquire"},
                        {"name", "a"}, {"version", 1},    {"result", -5}};
  EXPECT_THAT(logText(refused, true), testing::StartsWith("\x1B[31m"));
  EXPECT_THAT(logText(refused, true), testing::HasSubstr("acquire a version 1; error -5"));
  const Json misuse = {{"t", 0}, {"what", "misuse"}, {"text", "leaked"}};
  EXPECT_THAT(logText(misuse, true), testing::StartsWith("\x1B[31m"));
}

TEST(LogText, NamesTheModifiersOfAWheelTick) {
  const Json tick = {{"t", 5},
                     {"what", "wheel"},
                     {"units", 0},
                     {"wheels", {0, -8}},
                     {"flags", 0x180000},
                     {"location", {500.0, 550.5}}};
  EXPECT_EQ(logText(tick, false),
            "     0.005 s  wheel            vertical 0, horizontal -8, with option and command, "
            "at (500.0, 550.5)\n");
}

TEST(LogText, MakesTextOfThePlugInPrintable) {
  const Json printed = {{"t", 0}, {"what", "printed"}, {"text", "\x1B[2Jgone\n"}};
  EXPECT_EQ(logText(printed, false), "     0.000 s  printed          \\x1B[2Jgone\\n\n");
}

TEST(LogText, ShowsTheFieldsOfAnUnknownKindAsTheyAre) {
  const Json line = {{"t", 0}, {"what", "news"}, {"a", 1}, {"b", {1, "x"}}};
  EXPECT_EQ(logText(line, false), "     0.000 s  news             a 1, b [1,\"x\"]\n");
}

}  // namespace
}  // namespace simulator
