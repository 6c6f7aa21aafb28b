// The manual page and the completions: they have every command and option that the help has.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/Process.h"

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;
using testing_support::Finished;
using testing_support::run;
using testing_support::TemporaryFolder;
using testing_support::writeFile;

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

/// The words of the help in the column of options or of commands.
std::set<std::string> namesInHelp(const std::vector<std::string>& arguments, bool isOption) {
  std::vector<std::string> command = {MRVSIM};
  command.insert(command.end(), arguments.begin(), arguments.end());
  command.push_back("--help");
  std::set<std::string> names;
  bool isListed = false;
  for (const std::string& line : linesOf(run(command).output)) {
    if (!line.starts_with("  ")) {
      isListed = line == (isOption ? "Options:" : "Subcommands:");
      continue;
    }
    if (!isListed) continue;
    std::string name = line.substr(2, line.find(' ', 2) - 2);
    if (name.starts_with("-h,")) name = name.substr(3);
    if (!name.empty()) names.insert(name);
  }
  return names;
}

/// Commands with their options, as the help has them.
std::map<std::string, std::set<std::string>> commands() {
  std::map<std::string, std::set<std::string>> commands;
  for (const std::string& name : namesInHelp({}, false)) commands[name] = namesInHelp({name}, true);
  return commands;
}

/// What bash offers after these words; the last is being typed.
std::vector<std::string> bashOffers(const std::vector<std::string>& words,
                                    const std::string& folder = ".") {
  std::string script = "cd '" + folder + "'; source " MRV_PAGES "/mrvsim.bash; COMP_WORDS=(mrvsim";
  for (const std::string& word : words) script += " '" + word + "'";
  const std::string before = words.size() > 1 ? words[words.size() - 2] : "mrvsim";
  script += "); COMP_CWORD=" + std::to_string(words.size()) + "; _mrvsim mrvsim '" + words.back() +
            "' '" + before + "'; printf '%s\\n' \"${COMPREPLY[@]}\"";
  const Finished finished = run({"bash", "-c", script});
  EXPECT_EQ(finished.errors, "");
  return linesOf(finished.output);
}

TEST(Pages, CompleteEveryCommandInBash) {
  std::vector<std::string> names = {"--help", "--version"};
  for (const auto& [name, options] : commands()) names.push_back(name);
  EXPECT_GE(names.size(), 7U);
  EXPECT_THAT(bashOffers({""}), UnorderedElementsAreArray(names));
  EXPECT_THAT(bashOffers({"va"}), UnorderedElementsAre("validate"));
}

TEST(Pages, CompleteEveryOptionInBash) {
  for (const auto& [name, options] : commands()) {
    EXPECT_GE(options.size(), 1U);
    EXPECT_THAT(bashOffers({name, "--"}), UnorderedElementsAreArray(options)) << name;
  }
}

TEST(Pages, CompleteFilesAndWordsInBash) {
  const TemporaryFolder folder;
  writeFile(folder.file("a b.json"), "");
  EXPECT_THAT(bashOffers({"play", ""}, folder.file("")), UnorderedElementsAre("a b.json"));
  EXPECT_THAT(bashOffers({"play", "--log", "a"}, folder.file("")),
              UnorderedElementsAre("a b.json"));
  EXPECT_THAT(bashOffers({"play", "--timeout", ""}, folder.file("")), UnorderedElementsAre(""));
  EXPECT_THAT(bashOffers({"list", "t"}, folder.file("")), UnorderedElementsAre("tools"));
}

/// What zsh offers: what the script hands to the shell's own functions.
std::string zshOffers(const std::string& words, int place) {
  const Finished finished =
      run({"zsh", "-fc",
           "_arguments() { print -rl -- \"$@\" }; _describe() { print -rl -- $offers }; words=(" +
               words + "); CURRENT=" + std::to_string(place) + "; source " MRV_PAGES "/_mrvsim"});
  EXPECT_EQ(finished.errors, "");
  return finished.output;
}

TEST(Pages, CompleteEveryCommandAndOptionInZsh) {
  for (const auto& [name, options] : commands()) {
    EXPECT_THAT(zshOffers("mrvsim ''", 2), HasSubstr(name + ":"));
    const std::string offers = zshOffers("mrvsim " + name + " ''", 3);
    for (const std::string& option : options) EXPECT_THAT(offers, HasSubstr(option + "["));
  }
  EXPECT_THAT(zshOffers("mrvsim list ''", 3), HasSubstr("(layouts procedures steps tools)"));
  EXPECT_THAT(zshOffers("mrvsim play ''", 3), HasSubstr("*:SCENARIO:_files"));
}

TEST(Pages, DescribeEveryCommandAndOptionInTheManual) {
  const Finished formatted =
      run({"groff", "-man", "-Tascii", "-P-c", "-P-b", "-P-u", "-ww", MRV_PAGES "/mrvsim.1"});
  EXPECT_EQ(formatted.errors, "");
  const std::vector<std::string> lines = linesOf(formatted.output);
  for (const auto& [name, options] : commands()) {
    auto line = std::find(lines.begin(), lines.end(), "   " + name);
    ASSERT_NE(line, lines.end()) << name;
    std::string section;
    while (++line != lines.end() && (line->empty() || line->starts_with("     "))) {
      section += *line + "\n";
    }
    for (const std::string& option : options) EXPECT_THAT(section, HasSubstr(option)) << name;
  }
  EXPECT_THAT(lines, Contains(HasSubstr("mrvsim " MRV_VERSION)));
}

}  // namespace
