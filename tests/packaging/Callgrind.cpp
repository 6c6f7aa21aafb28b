#include "tests/packaging/Callgrind.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string_view>
#include <vector>

#include "tests/support/Process.h"

namespace testing_support {

namespace {

/// Reads one file that callgrind wrote: lines `ob=` name the object file of the code that follows,
/// lines of numbers hold its instructions; after `calls=`, the numbers are those of the callee,
/// which `cob=` names if it lies in another object file.
class CallgrindReader {
 public:
  explicit CallgrindReader(const std::filesystem::path& file) {
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) read(line);
  }

  const Counts& counts() const { return counts_; }

  /// Whether code of the device framework ran, which only the plug-in's process loads.
  bool hasFramework() const { return hasFramework_; }

 private:
  void read(const std::string& line) {
    if (line.starts_with("ob=")) {
      object_ = callee_ = object(line.substr(3));
    } else if (line.starts_with("cob=")) {
      callee_ = object(line.substr(4));
    } else if (line.starts_with("calls=")) {
      readCalls(std::stoll(line.substr(6)));
    } else if (!line.empty() && std::string_view("0123456789+-*").find(line[0]) != line.npos) {
      readCost(line);
    }
  }

  /// A name is written in full, "(7) NAME", only the first time.
  std::string object(const std::string& text) {
    const std::size_t end = text.find(')') + 1;
    std::string& name = names_[text.substr(0, end)];
    if (end < text.size()) name = text.substr(end + 1);
    if (name.find("MoravinClient") != name.npos) hasFramework_ = true;
    return name;
  }

  void readCalls(std::int64_t calls) {
    const bool known = callee_ == kBundle || callee_.find("MrvSimulator") != callee_.npos;
    if (object_ == kBundle && !known) counts_.callsElsewhere += calls;
    callee_ = object_;
    costIsOfCallee_ = true;
  }

  void readCost(const std::string& line) {
    const std::size_t space = line.find(' ');
    if (object_ == kBundle && !costIsOfCallee_ && space != line.npos) {
      counts_.instructions += std::stoll(line.substr(space));
    }
    costIsOfCallee_ = false;
  }

  static constexpr const char* kBundle = "???";

  std::map<std::string, std::string> names_;
  std::string object_;
  std::string callee_;
  bool costIsOfCallee_ = false;
  bool hasFramework_ = false;
  Counts counts_;
};

}  // namespace

Counts countInPlay(const std::string& scenario) {
  const TemporaryFolder folder;
  writeFile(folder.file("scenario.json"), scenario);
  std::filesystem::create_directory(folder.file("counts"));
  const Finished played = run(
      {"valgrind", "--tool=callgrind", "--callgrind-out-file=" + folder.file("counts/%p"), MRVSIM,
       "play", folder.file("scenario.json"), "--plugin", MRV_BUNDLE, "--log", folder.file("log")});
  EXPECT_EQ(played.status, 0) << played.errors;
  // mrvsim runs the plug-in in one of several processes, each of which writes a file.
  std::vector<Counts> all;
  for (const auto& entry : std::filesystem::directory_iterator(folder.file("counts"))) {
    const CallgrindReader reader(entry.path());
    if (reader.hasFramework()) all.push_back(reader.counts());
  }
  EXPECT_EQ(all.size(), 1U) << played.errors;
  return all.empty() ? Counts{} : all.front();
}

}  // namespace testing_support
