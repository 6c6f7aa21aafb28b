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
#include <vector>

#include "simulator/base/Json.h"
#include "tests/mrvsim/Cases.h"

namespace {

using simulator::Json;
using testing_support::CaseFolder;
using testing_support::Finished;

struct Case {
  std::string name;
  Json description;
};

void PrintTo(const Case& one, std::ostream* stream) { *stream << one.name; }

Case spelledOut(const std::string& group, Json description) {
  if (description.contains("scenario")) {
    description["files"]["s.json"] = description["scenario"];
    description["arguments"] = {"play", "{dir}/s.json", "--log", "{dir}/log"};
  }
  if (description.contains("descriptor")) {
    description["files"]["d.json"] = description["descriptor"];
    description["arguments"] = {"dump", "{dir}/d.json", "{dir}/out"};
  }
  return {group + "_" + description["name"].get<std::string>(), description};
}

std::vector<Case> readCases() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(MRV_CASES)) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  std::vector<Case> cases;
  for (const auto& file : files) {
    for (const Json& description : Json::parse(testing_support::readFile(file))) {
      cases.push_back(spelledOut(file.stem().string(), description));
    }
  }
  return cases;
}

class BadInput : public testing::TestWithParam<Case> {};

TEST_P(BadInput, GivesItsStatusAndMessageAndLeavesNothing) {
  testing_support::adoptOrphans();
  const Json& description = GetParam().description;
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

TEST(BadInputCases, AreAtLeastAHundredAndFiftyWithANameEach) {
  std::set<std::string> names;
  for (const Case& one : readCases()) names.insert(one.name);
  EXPECT_EQ(names.size(), readCases().size());
  EXPECT_GE(names.size(), 150U);
}

}  // namespace
