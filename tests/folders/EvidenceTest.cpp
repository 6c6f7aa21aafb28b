// docs/evidence.md names every call of the platform, and only tests and scenarios that exist.
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include "tests/support/Process.h"

namespace {

namespace fs = std::filesystem;
using testing_support::readFile;

/// What the first group of `pattern` matches in `text`.
std::set<std::string> matches(const std::string& text, const std::string& pattern) {
  const std::regex expression(pattern);
  std::set<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end;
       ++match) {
    found.insert((*match)[1]);
  }
  return found;
}

/// The text of all files below `folder` that have one of the extensions.
std::string textBelow(const std::string& folder, const std::set<std::string>& extensions) {
  std::string text;
  for (const auto& entry : fs::recursive_directory_iterator(MRV_ROOT "/" + folder)) {
    if (extensions.contains(entry.path().extension())) text += readFile(entry.path().string());
  }
  return text;
}

std::string evidence() { return readFile(MRV_ROOT "/docs/evidence.md"); }

TEST(Evidence, NamesEveryCallOfThePlatform) {
  const std::string page = evidence();
  const auto calls =
      matches(textBelow("platform/macos", {".h"}) + textBelow("platform/moravin", {".h"}),
              R"(\b([A-Za-z_]\w*)\([^()]*\)\s*(?:__attribute__\(\(weak\)\))?;)");
  EXPECT_GT(calls.size(), 50U);
  for (const std::string& call : calls) {
    EXPECT_NE(page.find("`" + call), std::string::npos) << call;
  }
}

TEST(Evidence, NamesTestsThatExist) {
  const auto tests =
      matches(std::regex_replace(textBelow("tests", {".cpp"}),
                                 std::regex(R"(TEST(?:_F|_P)?\((\w+),\s*(\w+)\))"), "<$1.$2>"),
              "<(\\w+\\.\\w+)>");
  const auto named = matches(evidence(), R"(`([A-Z]\w+\.[A-Z]\w+)`)");
  EXPECT_GT(named.size(), 30U);
  for (const std::string& test : named) EXPECT_TRUE(tests.contains(test)) << test;
}

TEST(Evidence, NamesScenariosThatExist) {
  const auto named = matches(evidence(), "scenario `([^`]+)`");
  EXPECT_GT(named.size(), 2U);
  for (const std::string& scenario : named) {
    EXPECT_TRUE(fs::exists(MRV_ROOT "/tests/scenarios/" + scenario + ".json")) << scenario;
  }
}

}  // namespace
