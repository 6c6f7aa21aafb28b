#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "mrvsim/report/Report.h"
#include "simulator/base/Json.h"

namespace simulator {
namespace {

std::string pageOf(std::initializer_list<const char*> lines) {
  Report report;
  for (const char* line : lines) report.line(line);
  std::string page;
  report.write([&](std::string_view text) { page += text; });
  return page;
}

/// The data that a page holds.
Json dataIn(const std::string& page) {
  const std::string before = R"(<script id="data" type="application/json">)";
  const std::size_t begin = page.find(before) + before.size();
  return jsonOf(page.substr(begin, page.find("</script>", begin) - begin));
}

Json dataOf(std::initializer_list<const char*> lines) { return dataIn(pageOf(lines)); }

constexpr char kResult[] = R"({"t":5,"what":"result","value":0})";

TEST(Report, IsAPageThatLoadsNothing) {
  const std::string page = pageOf({kResult});
  EXPECT_THAT(page, testing::StartsWith("<!doctype html>"));
  EXPECT_THAT(page, testing::EndsWith("</html>\n"));
  EXPECT_THAT(page, testing::HasSubstr("default-src 'none'"));
  for (const char* address :
       {"http:", "https:", "import ", "\nexport ", "{{styles", "{{modules", "{{data"}) {
    EXPECT_EQ(page.find(address), std::string::npos) << address;
  }
}

TEST(Report, OfAnEmptyLogHasNoPlay) { EXPECT_EQ(dataOf({}), R"({"plays":[]})"_json); }

TEST(Report, BeginsAnotherPlayIfTimeGoesBack) {
  const Json plays = dataOf({kResult, kResult, R"({"t":4,"what":"result","value":1})"})["plays"];
  ASSERT_EQ(plays.size(), 2U);
  EXPECT_EQ(plays[0]["notes"]["size"], 2);
  EXPECT_EQ(plays[1]["texts"], R"([["result","the entry point returned 1",1]])"_json);
}

TEST(Report, HoldsEachTextOnce) {
  const Json play =
      dataOf({kResult, kResult, R"({"t":9,"what":"misuse","text":"leaked"})"})["plays"][0];
  EXPECT_EQ(play["texts"],
            R"([["result","the entry point returned 0",0],["misuse","leaked",2]])"_json);
  // 0, 0, 1 as differences.
  EXPECT_EQ(play["notes"]["text"], "AAEC");
}

TEST(Report, LetsNoTextEndItsScript) {
  const Json line = {{"t", 0}, {"what", "printed"}, {"text", "</script><script>alert(1)"}};
  const std::string page = pageOf({line.dump().c_str()});
  EXPECT_EQ(page.find("alert(1)\""), page.rfind("alert(1)\""));
  EXPECT_EQ(dataIn(page)["plays"][0]["texts"][0][1], "</script><script>alert(1)");
}

TEST(Report, KeepsNumbersThatAreOutOfRangeInRange) {
  const Json play = dataOf(
      {R"({"t":0,"what":"view","zoom":1e300,"origin":[null,-1e300],"brush":0})"})["plays"][0];
  EXPECT_EQ(play["views"]["size"], 1);
  EXPECT_EQ(play["views"]["x"], "AAA=");
  // A brush of no size is 1, which 0 without a brush is not.
  EXPECT_EQ(play["views"]["brush"], "Ag==");
}

}  // namespace
}  // namespace simulator
