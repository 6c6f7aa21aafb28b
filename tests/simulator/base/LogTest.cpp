#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "simulator/base/Log.h"

namespace simulator {
namespace {

class LogText : public testing::Test {
 protected:
  LogText() {
    theLog().setSink([this](const LogLine& line) {
      line.appendTo(text_);
      json_ = line;
      what_ = line.what();
    });
  }
  ~LogText() override { theLog().setSink({}); }

  /// What `Json` makes of one field.
  static std::string dumped(const Json& value) {
    const Json line = {{"t", 0}, {"what", "x"}, {"field", value}};
    return line.dump(-1, ' ', false, Json::error_handler_t::replace);
  }

  /// What the log makes of it.
  std::string written(const JsonValue& value) {
    text_.clear();
    theLog().write("x", {{"field", value}});
    return text_;
  }

  std::string text_;
  std::string what_;
  Json json_;
};

TEST_F(LogText, WritesFieldsInTheirOrderAfterTimeAndSubject) {
  theLog().setNow(12);
  theLog().write("wheel", {{"z", 1}, {"a", "b"}});
  EXPECT_EQ(text_, R"({"t":12,"what":"wheel","z":1,"a":"b"})");
  EXPECT_EQ(json_, Json::parse(text_));
  EXPECT_EQ(what_, "wheel");
  theLog().setNow(0);
}

TEST_F(LogText, WritesEveryValueAsJsonDoes) {
  EXPECT_EQ(written(nullptr), dumped(nullptr));
  EXPECT_EQ(written(true), dumped(true));
  EXPECT_EQ(written(false), dumped(false));
  for (const std::int64_t number :
       {std::int64_t{0}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::min(),
        std::numeric_limits<std::int64_t>::max()}) {
    EXPECT_EQ(written(number), dumped(number));
  }
  const std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
  EXPECT_EQ(written(most), dumped(most));
  EXPECT_EQ(written(std::uint16_t{65535}), dumped(65535));
  for (const double number : {0.0, -0.0, 1.0, 13.5, 0.1, 1e300, -2.5e-7, 123456789.125,
                              std::nan(""), std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(written(number), dumped(number));
  }
  const std::vector<std::string> texts = {"",
                                          "plain",
                                          "\"quoted\"",
                                          "back\\slash",
                                          std::string("\0\x01\x1F\x7F", 4),
                                          "\u00E4\u4E16",
                                          "\xFF broken \xC3",
                                          "line\nbreak\t"};
  for (const std::string& text : texts) EXPECT_EQ(written(text), dumped(text)) << text;
  const Json nested = {{"list", {1, 2.5, "three"}}, {"none", nullptr}};
  EXPECT_EQ(written(nested), dumped(nested));
}

TEST_F(LogText, WritesListsOfNumbers) {
  EXPECT_EQ(written(jsonList(std::vector<int>{})), dumped(Json::array()));
  EXPECT_EQ(written(jsonList(std::vector<int>{1, -2})), dumped({1, -2}));
  EXPECT_EQ(written(jsonList(std::vector<double>{1, 2.5})), dumped({1.0, 2.5}));
}

TEST_F(LogText, WritesTheMembersOfAnObject) {
  theLog().writeObject("play", {{"z", {1}}, {"a", "\xFF"}});
  EXPECT_EQ(text_, "{\"t\":0,\"what\":\"play\",\"z\":[1],\"a\":\"\uFFFD\"}");
  EXPECT_EQ(json_["z"], Json({1}));
}

TEST_F(LogText, RunsThePreludeBeforeEachLineButNotForItsOwn) {
  theLog().setPrelude([] { theLog().write("printed", {}); });
  theLog().write("a", {});
  theLog().setPrelude({});
  EXPECT_EQ(text_, R"({"t":0,"what":"printed"}{"t":0,"what":"a"})");
}

TEST(Log, CountsMisusesWhetherThereIsASinkOrNot) {
  Log log;
  log.misuse("one");
  EXPECT_EQ(log.misuses(), 1);
  std::string text;
  log.setSink([&](const LogLine& line) { line.appendTo(text); });
  log.misuse("two");
  EXPECT_EQ(log.misuses(), 2);
  EXPECT_EQ(text, R"({"t":0,"what":"misuse","text":"two"})");
}

TEST(Log, IsSilentWithoutASink) {
  Log log;
  int lines = 0;
  int preludes = 0;
  log.setPrelude([&] { ++preludes; });
  EXPECT_FALSE(log.enabled());
  log.write("x", {});
  log.setSink([&](const LogLine&) { ++lines; });
  EXPECT_TRUE(log.enabled());
  log.write("x", {});
  log.setSink({});
  EXPECT_FALSE(log.enabled());
  log.write("x", {});
  log.writeObject("x", Json::object());
  EXPECT_EQ(lines, 1);
  EXPECT_EQ(preludes, 1);
}

TEST(Log, StampsEachLineWithTheVirtualTime) {
  Log log;
  std::string text;
  log.setSink([&](const LogLine& line) { line.appendTo(text); });
  log.setNow(-3);
  log.write("x", {});
  log.setNow(90'000'000'000);
  log.writeObject("y", Json::object());
  EXPECT_EQ(text, R"({"t":-3,"what":"x"}{"t":90000000000,"what":"y"})");
}

TEST(Log, PassesOnWholeLinesOfSeveralThreads) {
  constexpr int kThreads = 4;
  constexpr int kLines = 200;
  Log log;
  std::map<int, int> next;  // for each thread, the number that its next line must have
  int inOrder = 0;
  log.setSink([&](const LogLine& line) {
    const Json json = line;
    if (json["number"] == next[json["thread"]]++) ++inOrder;
  });
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&log, thread] {
      for (int i = 0; i < kLines; ++i) log.write("x", {{"thread", thread}, {"number", i}});
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(inOrder, kThreads * kLines);
}

TEST(LogLine, HasAMemberOnlyAsItWasWritten) {
  Log log;
  bool has = false;
  bool hasOther = true;
  log.setSink([&](const LogLine& line) {
    has = line.has("\"down\":true");
    hasOther = line.has("\"down\":false");
  });
  log.write("key", {{"down", true}});
  EXPECT_TRUE(has);
  EXPECT_FALSE(hasOther);
}

TEST(LogLine, BeginsWithTheMemberAfterItsKind) {
  const LogLine line("x", std::string_view(R"({"t":7,"what":"x","class":"x","kind":2})"));
  EXPECT_TRUE(line.beginsWith(R"("class":"x")"));
  EXPECT_FALSE(line.beginsWith(R"("class":"xy")"));
  EXPECT_FALSE(line.beginsWith(R"("kind":2)"));
  const LogLine empty("x", std::string_view(R"({"t":7,"what":"x"})"));
  EXPECT_FALSE(empty.beginsWith(R"("class")"));
}

TEST(LogLine, GivesTheNumberAfterATextOrZero) {
  const LogLine line("x", std::string_view(R"({"t":7,"kind":18446744073709551615,"end":12)"));
  EXPECT_EQ(line.numberAfter(R"({"t":)"), 7u);
  EXPECT_EQ(line.numberAfter(R"("kind":)"), std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(line.numberAfter(R"("end":)"), 12u) << "at the end of the text";
  EXPECT_EQ(line.numberAfter(R"("what":)"), 0u);
  EXPECT_EQ(line.numberAfter(R"("kind")"), 0u) << "no number stands there";
}

TEST(LogLine, GivesTheNumbersThatStandInARow) {
  const LogLine line("x", std::string_view(R"({"pair":[-1.5e-3,2],"none":null,"end":7)"));
  std::array<double, 3> numbers = {};
  EXPECT_EQ(line.numbersAfter(R"("pair":[)", numbers), 2u);
  EXPECT_EQ(numbers, (std::array{-1.5e-3, 2.0, 0.0}));
  EXPECT_EQ(line.numbersAfter(R"("pair":[)", std::span(numbers).first(1)), 1u);
  EXPECT_EQ(line.numbersAfter(R"("none":)", numbers), 0u);
  EXPECT_EQ(line.numbersAfter(R"("other":)", numbers), 0u);
  EXPECT_EQ(line.numbersAfter(R"("end":)", numbers), 1u) << "at the end of the text";
  EXPECT_EQ(numbers, (std::array{7.0, 2.0, 0.0}));
}

TEST(IdText, IsAppendedAsAJsonString) {
  for (const std::uint32_t id : {0x6D727645u, 0x20207E20u, 0x6D72761Fu, 0x22727645u, 0x6D72765Cu,
                                 0x7F7F7F7Fu, 0x6D80FF45u, 1u}) {
    std::string text = "[";
    appendId(text, id);
    EXPECT_EQ(text, "[" + Json(idText(id)).dump());
  }
}

TEST(IdText, IsTheFourCharactersOrTheNumberIfOneIsNotPrintable) {
  EXPECT_EQ(idText(0x6D727645), "mrvE");
  EXPECT_EQ(idText(0x20207E20), "  ~ ");
  EXPECT_EQ(idText(0x6D72761F), "0x6d72761f");
  EXPECT_EQ(idText(0x7F727645), "0x7f727645");
  EXPECT_EQ(idText(0x6D80FF45), "0x6d80ff45");
  EXPECT_EQ(idText(1), "0x00000001");
}

}  // namespace
}  // namespace simulator
