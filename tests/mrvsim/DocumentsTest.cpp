// docs/scenario.md: every example in it is run, and it names all that the format has.
//
// In the document, a fence "```json NAME" is the file NAME, "```json step" has one step on each
// line, and "```console" has commands after "$ " with what they print.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "simulator/base/Json.h"
#include "tests/support/Process.h"

namespace {

using simulator::Json;
using simulator::jsonOf;
using testing_support::Finished;
using testing_support::readFile;
using testing_support::run;
using testing_support::TemporaryFolder;
using testing_support::writeFile;

const std::string kDocument = readFile(MRV_DOCUMENTS "/scenario.md");

/// A fenced part of the document: what stands after the opening fence, and the lines.
struct Example {
  std::string kind;
  std::string text;
};

std::vector<Example> examplesIn(const std::string& document) {
  std::vector<Example> examples;
  bool isInside = false;
  std::istringstream stream(document);
  for (std::string line; std::getline(stream, line);) {
    if (line.starts_with("```")) {
      if (!isInside) examples.push_back({line.substr(3), ""});
      isInside = !isInside;
    } else if (isInside) {
      examples.back().text += line + "\n";
    }
  }
  return examples;
}

/// What a shell prints that is given the commands of a console, with each command before it.
std::string consoleOf(const Example& example, const std::string& folder) {
  std::string script = "cd '" + folder + "'\nexec 2>&1\n";
  std::istringstream stream(example.text);
  for (std::string line; std::getline(stream, line);) {
    if (!line.starts_with("$ ")) continue;
    // The status of the command stays what the one before it left.
    script += "status=$?; cat <<'COMMAND'\n" + line + "\nCOMMAND\n(exit $status)\n";
    script += line.substr(2) + "\n";
  }
  const std::filesystem::path bin = std::filesystem::path(MRVSIM).parent_path();
  return run({"env", "PATH=" + bin.string() + ":" + std::getenv("PATH"), "bash", "-c", script})
      .output;
}

TEST(ScenarioDocument, HasExamplesThatDoWhatItSays) {
  const TemporaryFolder folder;
  int consoles = 0;
  for (const Example& example : examplesIn(kDocument)) {
    SCOPED_TRACE(example.text);
    if (example.kind == "console") {
      ++consoles;
      EXPECT_EQ(consoleOf(example, folder.file("")), example.text);
    } else if (example.kind == "json step" || example.kind == "text") {
      continue;
    } else {
      ASSERT_THAT(example.kind, testing::MatchesRegex("json [a-z]+\\.json"));
      writeFile(folder.file(example.kind.substr(5)), example.text);
    }
  }
  EXPECT_GE(consoles, 7);
}

TEST(ScenarioDocument, HasStepsThatCanBePlayed) {
  const TemporaryFolder folder;
  std::set<std::string> kinds = {"call"};
  std::string steps = R"({"call": ["SP Interface", "Startup"]})";
  for (const Example& example : examplesIn(kDocument)) {
    if (example.kind != "json step") continue;
    std::istringstream stream(example.text);
    for (std::string line; std::getline(stream, line);) {
      steps += ",\n" + line;
      const Json step = jsonOf(line);
      for (const auto& [name, value] : step.items()) kinds.insert(name);
    }
  }
  writeFile(folder.file("steps.json"), "{\"steps\": [\n" + steps + "\n]}\n");
  const Finished played = run({MRVSIM, "play", folder.file("steps.json"), "--summary"});
  EXPECT_EQ(played.status, 0);
  EXPECT_EQ(played.errors, "");
  std::istringstream all(run({MRVSIM, "list", "steps"}).output);
  for (std::string kind; std::getline(all, kind);) EXPECT_EQ(kinds.count(kind), 1U) << kind;
}

TEST(ScenarioDocument, ShowsTheDefaults) {
  const TemporaryFolder folder;
  const auto play = [&](const std::string& text) {
    Json scenario = jsonOf(text);
    scenario["steps"] = jsonOf(readFile(MRV_SCENARIOS "/view.json"))["steps"];
    writeFile(folder.file("s.json"), scenario.dump());
    return run({MRVSIM, "play", folder.file("s.json")}).output;
  };
  for (const Example& example : examplesIn(kDocument)) {
    if (example.kind != "json defaults.json") continue;
    EXPECT_EQ(play(example.text), play("{}"));
    return;
  }
  FAIL() << "there is no such example";
}

/// The names after "allowed: " in a message.
std::vector<std::string> allowedIn(std::string message) {
  message = message.substr(message.find("allowed: ") + 9);
  for (const std::string separator : {", ", " and "}) {
    for (std::size_t at; (at = message.find(separator)) != std::string::npos;) {
      message.replace(at, separator.size(), "\n");
    }
  }
  std::vector<std::string> names;
  std::istringstream stream(message);
  for (std::string name; std::getline(stream, name);) names.push_back(name);
  return names;
}

class ScenarioDocumentFields : public testing::TestWithParam<const char*> {};

TEST_P(ScenarioDocumentFields, AreAllNamed) {
  const TemporaryFolder folder;
  writeFile(folder.file("s.json"), GetParam());
  const auto names = allowedIn(run({MRVSIM, "validate", folder.file("s.json")}).errors);
  EXPECT_GE(names.size(), 2U);
  for (const std::string& name : names) {
    EXPECT_THAT(kDocument, testing::HasSubstr("`" + name + "`"));
  }
}

INSTANTIATE_TEST_SUITE_P(, ScenarioDocumentFields,
                         testing::Values(R"({"?": 1})", R"({"host": {"?": 1}})",
                                         R"({"steps": [{"?": 1}]})",
                                         R"({"steps": [{"message": {"?": 1}}]})",
                                         R"({"steps": [{"fail": {"?": 1}}]})",
                                         R"({"host": {"window": {"?": 1}}})"));

TEST(ScenarioDocument, NamesEveryKindOfLogLine) {
  std::set<std::string> kinds;
  for (const auto& entry : std::filesystem::directory_iterator(MRV_SCENARIOS)) {
    if (entry.path().extension() != ".jsonl") continue;
    std::istringstream stream(readFile(entry.path()));
    for (std::string line; std::getline(stream, line);) kinds.insert(jsonOf(line)["what"]);
  }
  EXPECT_GE(kinds.size(), 12U);
  for (const std::string& kind : kinds) {
    EXPECT_THAT(kDocument, testing::HasSubstr("`" + kind + "`"));
  }
}

}  // namespace
