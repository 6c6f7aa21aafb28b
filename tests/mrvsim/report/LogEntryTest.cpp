#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "mrvsim/report/LogEntry.h"

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr char kSample[] =
    R"({"t":1010,"what":"posted","class":"mrvE","kind":2,"priority":2,"parameters":)"
    R"([["tpnx","shor",1],["tpny","shor",-2],["tpnz","shor",32767],["trtx","shor",-32768],)"
    R"(["trty","shor",5],["trtz","shor",6],["ttim","comp",1010000000]]})";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  return text.replace(text.find(from), from.size(), to);
}

TEST(QuickSample, GivesTheAxesInTheOrderOfTheScenario) {
  const auto sample = quickSample(kSample);
  ASSERT_TRUE(sample.has_value());
  EXPECT_EQ(sample->time, 1010);
  EXPECT_THAT(sample->axes, ElementsAre(1, 32767, -2, -32768, 6, 5));
}

TEST(QuickSample, IsWhatTheParserReads) {
  const auto parsed = sampleIn(readLogEntry(kSample));
  ASSERT_TRUE(parsed.has_value());
  EXPECT_EQ(parsed->time, quickSample(kSample)->time);
  EXPECT_EQ(parsed->axes, quickSample(kSample)->axes);
}

TEST(QuickSample, LeavesEveryOtherFormToTheParser) {
  for (const auto& [from, to] :
       std::vector<std::pair<std::string, std::string>>{{"\"t\":", "\"t\": "},
                                                        {"\"kind\":2", "\"kind\":1"},
                                                        {"1010,", "-1010,"},
                                                        {"1010,", "01010,"},
                                                        {"1010,", "9223372036855,"},
                                                        {"\"shor\",1]", "\"shor\",32768]"},
                                                        {"\"shor\",1]", "\"shor\",01]"},
                                                        {"\"shor\",1]", "\"shor\",+1]"},
                                                        {"\"shor\",1]", "\"shor\",]"},
                                                        {"\"shor\",1]", "\"shor\",1.5]"},
                                                        {"]]}", "]],\"more\":1}"},
                                                        {"]]}", "]]} x"},
                                                        {"]]}", "]]"}}) {
    EXPECT_FALSE(quickSample(replaced(kSample, from, to)).has_value()) << from << " " << to;
  }
  EXPECT_FALSE(quickSample("").has_value());
}

TEST(SampleIn, TakesWhatIsNotAnAxisForZero) {
  const auto sample =
      sampleIn(readLogEntry(R"({"t":0,"what":"posted","class":"mrvE","kind":2,"parameters":)"
                            R"([["tpnx","TEXT","a"],["tpny","long",40000],["tpnz","shor",7]]})"));
  ASSERT_TRUE(sample.has_value());
  EXPECT_THAT(sample->axes, ElementsAre(0, 7, 0, 0, 0, 0));
}

TEST(ReadLogEntry, AllowsMoreFields) {
  EXPECT_EQ(readLogEntry(R"({"t":0,"what":"result","value":0,"more":[1]})")["value"], 0);
}

TEST(ReadLogEntry, AllowsNullForNumbersThatJsonCannotHold) {
  EXPECT_NO_THROW(
      readLogEntry(R"({"t":0,"what":"wheel","wheels":[1],"flags":0,"location":[null,1]})"));
}

using Lines = std::vector<std::pair<std::string, std::uint64_t>>;

Lines linesOf(const std::string& text) {
  Lines lines;
  eachLine(TextSource(text),
           [&](std::string_view line, std::uint64_t number) { lines.emplace_back(line, number); });
  return lines;
}

TEST(EachLine, NumbersTheLines) {
  EXPECT_THAT(linesOf("a\n\nb\n"), ElementsAre(Pair("a", 1), Pair("", 2), Pair("b", 3)));
  EXPECT_THAT(linesOf("a\nb"), ElementsAre(Pair("a", 1), Pair("b", 2)));
  EXPECT_THAT(linesOf(""), ElementsAre());
}

TEST(EachLine, JoinsLinesThatAreReadInPieces) {
  const std::string text(200000, 'x');
  EXPECT_EQ(linesOf(text + "\ny\n"), (Lines{{text, 1}, {"y", 2}}));
}

TEST(EachLine, EndsALineAtAByteThatNoLineHolds) {
  EXPECT_EQ(linesOf(std::string("a\0b\n", 4)), (Lines{{std::string("a\0", 2), 1}, {"b", 2}}));
}

}  // namespace
}  // namespace simulator
