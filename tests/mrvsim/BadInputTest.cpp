// Bad calls of mrvsim, described in cases/*.json: each gives its exit status and exactly its
// messages, leaves nothing in the folder for temporary files, and no process.
//
// Fields besides those that start the program (Cases.h): `name`; `scenario`, short for the file
// s.json that is played with its log in {dir}/log; `descriptor`, short for d.json that is dumped to
// {dir}/out; `status`; `errors` and `output`, whole; `after`, the files that are there afterwards
// with their contents, besides `files`, which stay as they were.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/base/Json.h"
#include "tests/mrvsim/Cases.h"

namespace {

using simulator::Json;
using simulator::jsonOf;
using testing_support::CaseFolder;
using testing_support::Finished;

/// A case as it stands in its file. Each process of this program runs one of them, so only that one
/// is parsed.
struct Case {
  std::string name;
  std::string text;
};

void PrintTo(const Case& one, std::ostream* stream) { *stream << one.name; }

std::string nameIn(const std::string& text) {
  static constexpr std::string_view kBefore = "\n    \"name\": \"";
  const std::size_t begin = text.find(kBefore) + kBefore.size();
  return text.substr(begin, text.find('"', begin) - begin);
}

/// The files hold a list of objects, and the brackets of those alone are indented by two.
void addCases(const std::filesystem::path& file, std::vector<Case>& cases) {
  const std::string text = testing_support::readFile(file);
  std::size_t end = 0;
  for (std::size_t at; (at = text.find("\n  {\n", end)) != std::string::npos;) {
    end = text.find("\n  }", at) + std::string_view("\n  }").size();
    const std::string one = text.substr(at, end - at);
    cases.push_back({file.stem().string() + "_" + nameIn(one), one});
  }
}

std::vector<std::filesystem::path> caseFiles() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(MRV_CASES)) {
    // Without a window, each of them would only say that there is none.
    const bool isOfTheWindow = entry.path().stem() == "live";
    if (MRV_HAS_LIVE || !isOfTheWindow) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<Case> readCases() {
  std::vector<Case> cases;
  for (const auto& file : caseFiles()) addCases(file, cases);
  return cases;
}

Json spelledOut(Json description) {
  if (description.contains("scenario")) {
    description["files"]["s.json"] = description["scenario"];
    description["arguments"] = {"play", "{dir}/s.json", "--log", "{dir}/log"};
  }
  if (description.contains("descriptor")) {
    description["files"]["d.json"] = description["descriptor"];
    description["arguments"] = {"dump", "{dir}/d.json", "{dir}/out"};
  }
  return description;
}

class BadInput : public testing::TestWithParam<Case> {};

TEST_P(BadInput, GivesItsStatusAndMessageAndLeavesNothing) {
  testing_support::adoptOrphans();
  const Json description = spelledOut(jsonOf(GetParam().text));
  const CaseFolder folder;
  const Finished finished = finish(start(description, folder), description, folder);
  EXPECT_EQ(finished.status, description["status"]);
  EXPECT_EQ(finished.errors, description["errors"].get<std::string>());
  EXPECT_EQ(finished.output, description.value("output", ""));
  Json after = description.value("files", Json::object());
  after.update(description.value("after", Json::object()));
  std::set<std::string> expected;
  for (const auto& [name, content] : after.items()) {
    expected.insert(name);
    if (!content.is_string()) continue;
    EXPECT_EQ(folder.shortened(testing_support::readFile(folder.file(name))),
              content.get<std::string>());
  }
  EXPECT_THAT(folder.files(), testing::ElementsAreArray(expected));
  EXPECT_THAT(folder.leftovers(), testing::IsEmpty());
  EXPECT_FALSE(testing_support::isAnyProcessLeft());
}

INSTANTIATE_TEST_SUITE_P(, BadInput, testing::ValuesIn(readCases()),
                         [](const auto& test) { return test.param.name; });

TEST(BadInputCases, AreAtLeastThreeHundredWithANameEach) {
  std::set<std::string> names;
  for (const auto& file : caseFiles()) {
    for (const Json& one : jsonOf(testing_support::readFile(file))) {
      names.insert(file.stem().string() + "_" + one["name"].get<std::string>());
    }
  }
  std::set<std::string> run;
  for (const Case& one : readCases()) run.insert(one.name);
  EXPECT_EQ(run, names);
  EXPECT_EQ(run.size(), readCases().size());
  EXPECT_GE(run.size(), 300U);
}

}  // namespace
