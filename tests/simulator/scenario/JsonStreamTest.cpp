#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "simulator/scenario/JsonStream.h"
#include "tests/support/PrintJson.h"

namespace {

using namespace simulator;

std::string at(const Position& position) {
  return std::to_string(position.line) + ":" + std::to_string(position.column);
}

/// What was passed on, a line each.
std::vector<std::string> piecesOf(const ByteSource& source) {
  std::vector<std::string> lines;
  JsonPieces pieces;
  pieces.streamed = "steps";
  pieces.member = [&](const std::string& name, const Json& value) {
    lines.push_back(name + "=" + value.dump());
  };
  pieces.element = [&](const Json& value, std::uint64_t index, Position position) {
    lines.push_back(std::to_string(index) + "@" + at(position) + "=" + value.dump());
  };
  pieces.document = [&](const Json& value) { lines.push_back("=" + value.dump()); };
  readJson(source, pieces);
  return lines;
}

std::vector<std::string> piecesOf(const std::string& text) { return piecesOf(TextSource(text)); }

/// The values are dropped: writing a deep one would need a deep stack.
std::string faultOf(const std::string& text) {
  JsonPieces pieces;
  pieces.streamed = "steps";
  pieces.member = [](const std::string&, const Json&) {};
  pieces.element = [](const Json&, std::uint64_t, Position) {};
  pieces.document = [](const Json&) {};
  try {
    readJson(TextSource(text), pieces);
  } catch (const JsonError& error) {
    return at(error.position()) + " " + error.what();
  }
  return "nothing wrong";
}

std::string placeIn(const std::string& text, const std::string& pointer) {
  const JsonPlace place = placeOf(TextSource(text), pointer);
  return (place.key ? at(*place.key) + " " : "") + at(place.value);
}

TEST(JsonStream, PassesOnEachMemberAndEachElementOfTheStreamedList) {
  EXPECT_THAT(piecesOf(R"({"host": {"tool": "a", "b": [1, {"c": null}]}, "mouse": [1.5, -2],
 "steps": [{"at": 1},
           [], "x", 5],
 "framework": true})"),
              testing::ElementsAre(R"(host={"tool":"a","b":[1,{"c":null}]})", "mouse=[1.5,-2]",
                                   R"(0@2:12={"at":1})", "1@3:12=[]", "2@3:16=\"x\"", "3@3:21=5",
                                   "framework=true"));
}

TEST(JsonStream, PassesOnAStreamedMemberThatIsNotAListWhole) {
  EXPECT_THAT(piecesOf(R"({"steps": {"steps": [1]}})"),
              testing::ElementsAre(R"(steps={"steps":[1]})"));
}

TEST(JsonStream, StreamsOnlyTheListOfTheDocumentItself) {
  EXPECT_THAT(piecesOf(R"({"host": {"steps": [1, 2]}, "steps": []})"),
              testing::ElementsAre(R"(host={"steps":[1,2]})"));
}

TEST(JsonStream, PassesOnADocumentThatIsNotAnObject) {
  EXPECT_THAT(piecesOf("7"), testing::ElementsAre("=7"));
  EXPECT_THAT(piecesOf("null"), testing::ElementsAre("=null"));
  EXPECT_EQ(piecesOf("[1, 2]").front(), "=[]") << "a list is reported when it begins";
}

/// A list of a million steps that is made while it is read.
class EndlessSteps : public ByteSource {
 public:
  std::size_t read(std::uint64_t offset, char* to, std::size_t size) const override {
    static const std::string head = R"({"steps": [{})";
    farthest = std::max(farthest, offset + size);
    for (std::size_t i = 0; i < size; ++i) {
      const std::uint64_t place = offset + i;
      to[i] = place < head.size() ? head[place] : ",{}"[(place - head.size()) % 3];
    }
    return size;
  }
  mutable std::uint64_t farthest = 0;
};

TEST(JsonStream, PassesOnAnElementBeforeTheNextIsRead) {
  struct Enough {};
  const EndlessSteps source;
  JsonPieces pieces;
  pieces.streamed = "steps";
  pieces.member = [](const std::string&, const Json&) {};
  std::uint64_t read = 0;
  pieces.element = [&](const Json&, std::uint64_t index, Position) {
    if (index == 200000) throw Enough();
    read = source.farthest;
    EXPECT_LE(read, 3 * index + 100000);
  };
  EXPECT_THROW(readJson(source, pieces), Enough);
  EXPECT_GE(read, 600000U);
}

/// Which elements were taken straight from the text ("q") and which were parsed ("p"), each with
/// its index and its place.
std::vector<std::string> takenFrom(const std::string& text) {
  std::vector<std::string> lines;
  JsonPieces pieces;
  pieces.streamed = "steps";
  pieces.member = [](const std::string&, const Json&) {};
  pieces.document = [](const Json&) {};
  pieces.element = [&](const Json&, std::uint64_t index, Position position) {
    lines.push_back("p" + std::to_string(index) + "@" + at(position));
  };
  pieces.quick = [&](std::string_view rest, std::uint64_t index, Position position) {
    if (!rest.starts_with("[7],")) return std::size_t{0};
    lines.push_back("q" + std::to_string(index) + "@" + at(position));
    return std::size_t{4};
  };
  readJson(TextSource(text), pieces);
  return lines;
}

TEST(JsonStream, LetsElementsBeTakenStraightFromTheText) {
  EXPECT_THAT(
      takenFrom("{\"steps\": [[7], [7],[7],\n\n  [7], [8], [7], [7]], \"a\": [[7], [7], [7]]}"),
      testing::ElementsAre("p0@1:12", "q1@1:17", "q2@1:21", "q3@3:3", "p4@3:8", "q5@3:13",
                           "p6@3:18"));
  EXPECT_THAT(takenFrom(R"({"steps": [7, {"a": 1, "b": [[7], [7]]}, [7], {}]})"),
              testing::ElementsAre("p0@1:12", "p1@1:15", "q2@1:42", "p3@1:47"));
}

TEST(JsonStream, TakesElementsAcrossTheEndsOfItsBuffer) {
  std::string text = "{\"steps\": [[7]";
  constexpr std::size_t kCount = 40000;
  for (std::size_t i = 1; i < kCount; ++i) text += ",\n" + std::string(i % 7, ' ') + "[7]";
  const std::vector<std::string> taken = takenFrom(text + "]}");
  ASSERT_EQ(taken.size(), kCount);
  for (std::size_t i = 1; i < kCount; ++i) {
    const std::string place = std::to_string(i + 1) + ":" + std::to_string(i % 7 + 1);
    const std::string way = i + 1 < kCount ? "q" : "p";
    ASSERT_EQ(taken[i], way + std::to_string(i) + "@" + place);
  }
}

TEST(JsonStream, CountsCharactersAndNotBytesInAColumn) {
  EXPECT_EQ(faultOf("{\"\u00e4\u65e5\": x}"), faultOf("{\"ab\": x}"));
  EXPECT_EQ(faultOf("{\"ab\": x}").substr(0, 4), "1:8 ");
}

TEST(JsonStream, CountsLinesByTheirEnds) {
  EXPECT_EQ(faultOf("{\r\n\n  \"a\": x}").substr(0, 4), "3:8 ");
}

TEST(JsonStream, RefusesAKeyThatStandsTwice) {
  EXPECT_EQ(faultOf("{\"a\": 1,\n \"a\": 1}"), "2:2 the key \"a\" stands twice in one object");
  EXPECT_EQ(faultOf(R"({"b": {"a": 1, "a": 2}})"), "1:16 the key \"a\" stands twice in one object");
  EXPECT_EQ(faultOf(R"({"b": {"a": 1}, "c": {"a": 2}})"), "nothing wrong");
}

TEST(JsonStream, AllowsAsMuchNestingAsItSays) {
  const auto nested = [](std::size_t levels) {
    return R"({"a": )" + std::string(levels, '[') + std::string(levels, ']') + "}";
  };
  EXPECT_EQ(faultOf(nested(kMostLevels - 1)), "nothing wrong");
  EXPECT_EQ(faultOf(nested(kMostLevels)),
            "1:10006 the document is nested deeper than 10000 levels");
}

TEST(JsonStream, AllowsAsManyMembersAsItSays) {
  const auto object = [](std::size_t members) {
    std::string text = R"({"a": {"k": 0)";
    for (std::size_t i = 1; i < members; ++i) text += ",\"" + std::to_string(i) + "\":0";
    return text + "}}";
  };
  EXPECT_EQ(faultOf(object(kMostMembers)), "nothing wrong");
  EXPECT_NE(faultOf(object(kMostMembers + 1)).find("more than 1000 members"), std::string::npos);
}

TEST(JsonStream, DoesNotMistakeTheDocumentForThePartOfAMessage) {
  EXPECT_EQ(faultOf(R"({"a": "ill-formed UTF-8; expected ']'" "b"})"),
            "1:40 expected a comma or the end of the object");
}

TEST(JsonStream, FindsTheValueThatAPointerNames) {
  const std::string text = "{\"a\": [10, {\"b/c\": 1,\n  \"~\": [[], true]}], \"x\": {}}";
  EXPECT_EQ(placeIn(text, ""), "1:1");
  EXPECT_EQ(placeIn(text, "/a"), "1:2 1:7");
  EXPECT_EQ(placeIn(text, "/a/0"), "1:8");
  EXPECT_EQ(placeIn(text, "/a/1"), "1:12");
  EXPECT_EQ(placeIn(text, "/a/1/b~1c"), "1:13 1:20");
  EXPECT_EQ(placeIn(text, "/a/1/~0/1"), "2:13");
  EXPECT_EQ(placeIn(text, "/x"), "2:22 2:27");
}

TEST(JsonStream, FindsTheInnermostValueOnTheWayToWhatIsMissing) {
  EXPECT_EQ(placeIn("{\"a\": {\"b\": 1}, \"c\": 2}", "/a/x"), "1:2 1:7");
}

}  // namespace
