#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "simulator/scenario/JsonFile.h"
#include "tests/support/Process.h"

namespace {

using namespace simulator;
using testing::ThrowsMessage;

TEST(JsonFile, IsParsedWhole) {
  EXPECT_EQ(parseJson(" {\"a\": [1, null], \"b\": {\"a\": \"x\"}}\n", "f"),
            (Json{{"a", {1, nullptr}}, {"b", {{"a", "x"}}}}));
}

TEST(JsonFile, IsRefusedWithItsNameAndThePlace) {
  EXPECT_THAT([] { parseJson("{\"a\": 1,\n  }", "file.json"); },
              ThrowsMessage<BadJsonFile>(testing::StartsWith("file.json:2:3: ")));
  EXPECT_THAT(
      [] { parseJson("{\"a\": 1,\n \"a\": 2}", "file.json"); },
      ThrowsMessage<BadJsonFile>("file.json:2:2: the key \"a\" stands twice in one object"));
  EXPECT_THAT([] { parseJson("", "-"); },
              ThrowsMessage<BadJsonFile>(testing::StartsWith("-:1:1: ")));
}

TEST(JsonFile, NamesThePlaceOfAValueThatAPointerNames) {
  const std::string text = "{\"a\":\n [1, {\"b\": 2}]}";
  EXPECT_EQ(faultAt(TextSource(text), "f", "/a/1/b", "must be 3"), "f:2:12: /a/1/b: must be 3");
  EXPECT_EQ(faultAt(TextSource(text), "f", "", "must be a list"), "f:1:1: /: must be a list");
}

TEST(JsonFile, ShowsAPlaceInPrintableAndShortForm) {
  EXPECT_EQ(printablePlace(""), "/");
  EXPECT_EQ(printablePlace("/steps/1"), "/steps/1");
  EXPECT_EQ(printablePlace("/a\n\x1b").find_first_of("\n\x1b"), std::string::npos);
  EXPECT_LT(printablePlace("/" + std::string(1000, 'x')).size(), 100U);
}

TEST(JsonFile, PutsAMessageOnOneLine) {
  EXPECT_EQ(onOneLine("a\nb\tc\x1f"
                      "d e~\x7f\xc3\xa9"),
            "a b c d e~\x7f\xc3\xa9");
}

TEST(JsonFile, IsReadByteByByte) {
  const testing_support::TemporaryFolder folder;
  const std::string bytes("\xff\0 {\r\n", 6);
  testing_support::writeFile(folder.file("f"), bytes);
  EXPECT_EQ(readTextFile(folder.file("f")), bytes);
  EXPECT_THROW(readTextFile(folder.file("missing")), BadInput);
}

}  // namespace
