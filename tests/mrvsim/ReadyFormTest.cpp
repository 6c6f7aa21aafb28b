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
    List list;
    for (int i = 0; i < 1200; ++i) {
      const bool isNested = i % 400 == 7;
      list.values.push_back(isNested ? boxed(kObject, point()) : valueOf(kInteger, i));
    }
    steps.push_back(stepWith(valueOf(kList, std::move(list))));
    steps.push_back(stepOf(stringId("every type"), "Every \"type\" ?\?/", std::move(items)));
    return setOf(std::move(steps));
  }

  static Descriptor point() {
    Descriptor made{className(stringId("point")), {}};
    made.items.push_back({codeId("Hrzn"), valueOf(kFloat, 0.1)});
    return made;
  }

  TemporaryFolder folder_;
  std::string file_ = folder_.file("a ?\?= file.psd");
  std::string source_ = folder_.file("actions.atn");
  std::string target_ = folder_.file("actions.cpp");
  std::string program_ = folder_.file("program");
};

/// An action whose second step holds an object array.
RecordedAction actionWithAnObjectArray() {
  RecordedAction action;
  action.head.name = textOf(u"Incomplete");
  action.steps.push_back(stepWith(valueOf(kInteger, std::int32_t{1})));
  action.steps.push_back(stepWith(boxed(kObjectArray, ObjectArray{})));
  action.steps.push_back(stepWith(valueOf(kInteger, std::int32_t{2})));
  return action;
}

TEST_F(ReadyForm, GivesTheHostEveryTypeOfItemAndLeaksNothingWhateverFails) {
  RecordedSet set = everyTypeThatCanBePut();
  RandomSteps random(seed(), 3, file_);
  for (auto& action : random.set(30).actions) set.actions.push_back(std::move(action));
  set.actions.push_back(actionWithAnObjectArray());
  const std::string text = dumped(written(set));
  EXPECT_THAT(text, HasSubstr("false},  // incomplete\n"));
  build();
  ASSERT_FALSE(HasFatalFailure());
  EXPECT_THAT(played({"--faults"}),
              testing::ContainsRegex("^[1-9][0-9]+ compared, .* 1 incomplete, .*[0-9]{3} failures"))
      << "MRV_SEED=" << seed();
}

TEST_F(ReadyForm, GivesTheHostFiveHundredRandomSteps) {
  dumped(written(RandomSteps(seed(), 3, file_).set(500)));
  build();
  ASSERT_FALSE(HasFatalFailure());
  EXPECT_THAT(played(), testing::ContainsRegex("^[1-9][0-9]{2} compared, .* 0 incomplete"))
      << "MRV_SEED=" << seed();
}

TEST_F(ReadyForm, IsTheSameEachTime) {
  const std::string bytes = written(RandomSteps(seed()).set(20));
  EXPECT_EQ(dumped(bytes), dumped(bytes));
}

TEST_F(ReadyForm, TakesThePlaceOfWhatTheFileHeld) {
  writeFile(target_, "the old text\n");
  EXPECT_THAT(dumped(written(setOf({}))), Not(HasSubstr("the old text")));
}

TEST_F(ReadyForm, ListsTheChosenStepsAlone) {
  RecordedSet set = everyTypeThatCanBePut();
  set.actions.push_back(actionWithAnObjectArray());
  set.actions.push_back({});
  set.actions.back().head.name = textOf(u"Empty");
  const std::string all = dumped(written(set));
  EXPECT_THAT(all, HasSubstr("    {\"Set\", \"Incomplete\", 3},\n    {\"Set\", \"Empty\", 0},\n"));
  const std::string one = dumped(written(set), {"--action", "Incomplete", "--step", "3"});
  EXPECT_THAT(one,
              HasSubstr("kRecordedActions[] = {\n    {\"Set\", \"Incomplete\", 1},\n    {nullptr"));
  EXPECT_THAT(one, HasSubstr("static int play2_3"));
  EXPECT_THAT(one, Not(HasSubstr("static int play2_1")));
  EXPECT_THAT(dumped(written(set), {"--action", "Empty"}),
              HasSubstr("kRecordedActions[] = {\n    {\"Set\", \"Empty\", 0},\n    {nullptr"));
}

TEST_F(ReadyForm, MakesADescriptorInJsonAnActionOfItsOwn) {
  source_ = folder_.file("descriptor.json");
  const std::string text =
      dumped(R"([{"key": "Wdth", "type": "long", "value": 7}])", {"--event", "slct"});
  EXPECT_THAT(text,
              HasSubstr("// Set \"dump\", action \"1\", step 1 \"\"\nstatic int play1_1() {\n"));
  EXPECT_THAT(text, HasSubstr("0x736C6374 /* eventSelect 'slct' */, desc[0].get()"));
  EXPECT_THAT(text, HasSubstr("    {\"dump\", \"1\", 1},\n    {nullptr, nullptr, 0},\n"));
  EXPECT_THAT(dumped("null"), HasSubstr("0x73657464 /* eventSet 'setd' */, nullptr"));
}

}  // namespace
