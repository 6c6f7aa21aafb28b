// Action files through `mrvsim dump --ready`: the source file is compiled as it is, linked with the
// simulated host and played, and the host must receive what the action file holds.
#include <gmock/gmock.h>

#include <cstdlib>

#include "tests/actionfiles/ActionFileWriter.h"
#include "tests/actionfiles/RandomSteps.h"
#include "tests/support/Process.h"

namespace {

using namespace actionfiles;
using namespace testing_support;
using testing::HasSubstr;
using testing::Not;

/// The environment's MRV_SEED, or a fixed seed.
std::uint32_t seed() {
  const char* given = std::getenv("MRV_SEED");
  return given ? static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10)) : 17;
}

class ReadyForm : public testing::Test {
 protected:
  ReadyForm() { writeFile(file_, ""); }

  /// The text of the file.
  std::string dumped(const std::string& bytes, const std::vector<std::string>& more = {}) {
    writeFile(source_, bytes);
    std::vector<std::string> command = {MRVSIM, "dump", source_, target_, "--ready"};
    command.insert(command.end(), more.begin(), more.end());
    const Finished finished = run(command);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output + finished.errors, "");
    return readFile(target_);
  }

  void build() {
    const Finished built = run({BUILD_READY, target_, program_});
    ASSERT_EQ(built.status, 0) << built.errors.substr(0, 4000);
  }

  /// What the program says.
  std::string played(const std::vector<std::string>& options = {}) {
    std::vector<std::string> command = {program_, source_};
    command.insert(command.end(), options.begin(), options.end());
    const Finished finished = run(command);
    EXPECT_EQ(finished.status, 0) << finished.errors.substr(0, 4000);
    EXPECT_EQ(finished.errors, "");
    return finished.output;
  }

  /// Every type that a host's suites can put, each in a step of its own and all of them in one.
  RecordedSet everyTypeThatCanBePut() {
    const auto isOther = [](const Value& value) {
      return value.type == kUnitFloats || value.type == kObjectArray;
    };
    std::vector<Step> steps;
    for (Value& value : everyType()) {
      if (!isOther(value)) steps.push_back(stepWith(std::move(value)));
    }
    std::vector<Item> items;
    for (Value& value : everyType()) {
      if (isOther(value)) continue;
      items.push_back(
          {Id(0x2A2F3F00 + static_cast<std::uint32_t>(items.size())), std::move(value)});
    }
    steps.push_back(stepOf(stringId("every type"), "Every \"type\" ?\?/", std::move(items)));
    return setOf(std::move(steps));
  }

  TemporaryFolder folder_;
  std::string file_ = folder_.file("a ?\?= file.psd");
  std::string source_ = folder_.file("actions.atn");
  std::string target_ = folder_.file("actions.cpp");
  std::string program_ = folder_.file("program");
};

TEST_F(ReadyForm, GivesTheHostEveryItemOfTheFileAndLeaksNothingWhateverFails) {
  RecordedSet set = everyTypeThatCanBePut();
  RandomSteps random(seed(), 3, file_);
  for (auto& action : random.set(500).actions) set.actions.push_back(std::move(action));
  dumped(written(set));
  build();
  ASSERT_FALSE(HasFatalFailure());
  EXPECT_THAT(played({"--faults"}), testing::ContainsRegex("[1-9][0-9]+ compared, .* failures"));
}

}  // namespace
