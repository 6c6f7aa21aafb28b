// Runs `mrvsim dump` on action files.
#include <gmock/gmock.h>

#include "mrvsim/ProgressBar.h"
#include "tests/actionfiles/ActionFileWriter.h"
#include "tests/actionfiles/RandomSteps.h"
#include "tests/support/Process.h"

namespace {

using namespace actionfiles;
using namespace testing_support;
using testing::HasSubstr;

/// A set of two actions: "First" with two steps, and "Second" with one that is not enabled.
RecordedSet twoActions() {
  RecordedSet set;
  set.head.name = textOf(u"My \u00E4 set");
  set.actions.resize(2);
  set.actions[0].head.name = textOf(u"First");
  set.actions[0].steps.push_back(stepOf(codeId("slct"), "Select", {}));
  Descriptor nested;
  nested.type = className(stringId("point"));
  nested.items.push_back({codeId("Hrzn"), valueOf(kFloat, 1.5)});
  std::vector<Item> items;
  items.push_back({codeId("Wdth"), valueOf(kInteger, std::int32_t{7})});
  items.push_back({codeId("Cntr"), boxed(kObject, std::move(nested))});
  set.actions[0].steps.push_back(stepOf(stringId("sampleEvent"), "Sample", std::move(items)));
  set.actions[1].head.name = textOf(u"Second");
  Step stop;
  stop.event = codeId("Stop");
  set.actions[1].steps.push_back(std::move(stop));
  return set;
}

class DumpActions : public testing::Test {
 protected:
  DumpActions() { writeFile(target_, "before\n"); }

  Finished dump(const std::string& bytes, const std::vector<std::string>& more = {}) {
    writeFile(source_, bytes);
    std::vector<std::string> command = {MRVSIM, "dump", source_, target_};
    command.insert(command.end(), more.begin(), more.end());
    return run(command);
  }

  /// The comments of what was appended, without their slashes.
  std::vector<std::string> comments() const {
    std::vector<std::string> lines;
    std::istringstream text(readFile(target_));
    for (std::string line; std::getline(text, line);) {
      if (line.starts_with("// Set ")) lines.push_back(line.substr(3));
    }
    return lines;
  }

  /// The comments that a choice of steps leads to.
  std::vector<std::string> chosen(const std::vector<std::string>& options) {
    writeFile(target_, "");
    const Finished finished = dump(written(twoActions()), options);
    EXPECT_EQ(finished.status, 0) << finished.errors;
    return comments();
  }

  void expectRefused(const std::string& bytes, const std::string& reason,
                     const std::vector<std::string>& more = {}) {
    const Finished finished = dump(bytes, more);
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.errors, HasSubstr(reason));
    EXPECT_EQ(finished.errors.find('\n'), finished.errors.size() - 1) << "one line";
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(readFile(target_), "before\n") << "the file is left as it was";
  }

  TemporaryFolder folder_;
  std::string source_ = folder_.file("actions.atn");
  std::string target_ = folder_.file("target.txt");
  const std::string kFirst1_ = R"(Set "My ä set", action "First", step 1 "Select")";
  const std::string kFirst2_ = R"(Set "My ä set", action "First", step 2 "Sample")";
  const std::string kSecond1_ = R"(Set "My ä set", action "Second", step 1 "", not enabled)";
};

using Lines = std::vector<std::string>;

TEST_F(DumpActions, AppendsEveryStepInOrderWithAComment) {
  const Finished finished = dump(written(twoActions()));
  EXPECT_EQ(finished.status, 0);
  EXPECT_EQ(finished.output + finished.errors, "");
  EXPECT_EQ(comments(), (Lines{kFirst1_, kFirst2_, kSecond1_}));
  const std::string text = readFile(target_);
  EXPECT_THAT(text, testing::StartsWith("before\n// " + kFirst1_ + "\nSPErr PlayeventSelect("));
  EXPECT_THAT(text, HasSubstr("// " + kFirst2_ + "\nSPErr PlaysampleEvent("));
  EXPECT_THAT(text, HasSubstr(", keyWidth, 7);\n"));
  EXPECT_THAT(text, HasSubstr("// " + kSecond1_ + "\nSPErr Play"));
  EXPECT_THAT(text, HasSubstr(", NULL, plugInDialogSilent);")) << "no descriptor";
}

TEST_F(DumpActions, WritesTheTextThatTheSameDescriptorInJsonHas) {
  std::vector<Step> steps;
  steps.push_back(stepWith(boxed(kObjectArray, ObjectArray{})));
  steps[0].event = codeId("setd");
  ASSERT_EQ(dump(written(setOf(std::move(steps)))).status, 0);
  const std::string fromActions = readFile(target_);
  writeFile(target_, "before\n");
  writeFile(folder_.file("step.json"), R"([{"key": "Key ", "type": "ObAr"}])");
  ASSERT_EQ(run({MRVSIM, "dump", folder_.file("step.json"), target_}).status, 0);
  const std::string fromJson = readFile(target_);
  const std::string comment = "// Set \"Set\", action \"Action\", step 1 \"Set\"\n";
  EXPECT_EQ(fromActions, "before\n" + comment + fromJson.substr(std::string("before\n").size()));
  EXPECT_THAT(fromJson, HasSubstr("ERROR DumpInfoFromDescriptor type: 'ObAr'"));
}

TEST_F(DumpActions, ChoosesByNameOrNumber) {
  EXPECT_EQ(chosen({"--action", "First"}), (Lines{kFirst1_, kFirst2_}));
  EXPECT_EQ(chosen({"--action", "2"}), (Lines{kSecond1_}));
  EXPECT_EQ(chosen({"--step", "1"}), (Lines{kFirst1_, kSecond1_}));
  EXPECT_EQ(chosen({"--step", "Sample"}), (Lines{kFirst2_}));
  EXPECT_EQ(chosen({"--step", "2", "--action", "1", "--set", "1"}), (Lines{kFirst2_}));
  EXPECT_EQ(chosen({"--set", "My ä set", "--step", "1", "--action", "2"}), (Lines{kSecond1_}));
}

TEST_F(DumpActions, TakesANameBeforeANumber) {
  RecordedSet set = twoActions();
  set.actions[1].head.name = textOf(u"1");
  EXPECT_EQ(dump(written(set), {"--action", "1"}).status, 0);
  EXPECT_EQ(comments(), (Lines{R"(Set "My ä set", action "1", step 1 "", not enabled)"}));
}

TEST_F(DumpActions, RefusesAChoiceOfNothing) {
  const std::string bytes = written(twoActions());
  const std::string allowed = " and the names that --list shows\n";
  expectRefused(bytes, "--set Other: there is no such set; allowed are 1 to 1" + allowed,
                {"--set", "Other"});
  expectRefused(bytes, "--action 3: there is no such action; allowed are 1 to 2" + allowed,
                {"--action", "3"});
  expectRefused(bytes, "--action 0: there is no such action", {"--action", "0"});
  expectRefused(bytes, "--step Sample: there is no such step; allowed are 1 to 1" + allowed,
                {"--step", "Sample", "--action", "Second"});
}

TEST_F(DumpActions, RefusesABrokenFileAndLeavesTheTargetUnchanged) {
  const std::string bytes = written(twoActions());
  // The last step is 20 bytes long, and its action's number of steps stands before it.
  const std::string place = "actions.atn: at byte " + std::to_string(bytes.size() - 24) + ": ";
  expectRefused(bytes.substr(0, bytes.size() - 1),
                place + "a number of steps of at most 0 is expected, found 1");
  expectRefused("[]", "at byte 0: the version 16 of an action file is expected");
}

TEST_F(DumpActions, RefusesOptionsThatDoNotFitTheFile) {
  expectRefused(written(twoActions()), "--event is for a descriptor in JSON", {"--event", "slct"});
  source_ = folder_.file("descriptor.json");
  expectRefused("[]", "--set, --action and --step are for an action file", {"--step", "1"});
  expectRefused("[]", "--list shows the whole file", {"--step", "1", "--list"});
}

TEST_F(DumpActions, KnowsAnActionFileByItsFirstByteToo) {
  source_ = folder_.file("actions.backup");
  EXPECT_EQ(dump(written(twoActions())).status, 0);
  EXPECT_EQ(comments().size(), 3u);
  writeFile(target_, "before\n");
  source_ = folder_.file("ACTIONS.ATN");
  expectRefused("{}", "at byte 0: ");
}

TEST_F(DumpActions, ListsSetsActionsStepsAndWhatTheyHold) {
  const Finished finished = dump(written(twoActions()), {"--list"});
  EXPECT_EQ(finished.status, 0);
  EXPECT_EQ(finished.errors, "");
  EXPECT_EQ(finished.output, R"(set "My ä set": 2 actions, 3 steps
  action 1 "First": 2 steps
    step 1 "Select", event 'slct': 1 descriptor, 0 items
    step 2 "Sample", event "sampleEvent": 2 descriptors, 3 items
  action 2 "Second": 1 step
    step 1 "", event 'Stop', disabled: no descriptor
descriptors: 1 "point", 2 outermost
items: 1 'Objc', 1 'doub', 1 'long'
)");
  EXPECT_EQ(readFile(target_), "before\n") << "nothing is written";
  const Finished alone = run({MRVSIM, "dump", source_, "--list"});
  EXPECT_EQ(alone.output, finished.output) << "a target is not needed";
}

TEST_F(DumpActions, ListsADescriptorInJsonAsOneStep) {
  source_ = folder_.file("descriptor.json");
  const std::string json = R"([{"key": "T   ", "type": "Objc", "class": "Brsh", "value": []}])";
  EXPECT_EQ(dump(json, {"--list"}).output, R"(set "dump": 1 action, 1 step
  action 1 "1": 1 step
    step 1 "", event 'setd': 2 descriptors, 1 item
descriptors: 1 'Brsh', 1 outermost
items: 1 'Objc'
)");
}

TEST_F(DumpActions, DumpsRandomStepsWithoutLeaks) {
  const Finished finished = dump(written(RandomSteps(9).set(200)));
  EXPECT_EQ(finished.status, 0);
  EXPECT_THAT(finished.errors, testing::Not(HasSubstr("misuse")));
  EXPECT_EQ(comments().size(), 200u);
}

TEST(ProgressBar, ShowsThePartThatIsDone) {
  EXPECT_EQ(simulator::progressLine("a.atn", 0, 10),
            "a.atn [                                        ]   0 %");
  EXPECT_EQ(simulator::progressLine("a.atn", 5, 10),
            "a.atn [####################                    ]  50 %");
  EXPECT_EQ(simulator::progressLine("a.atn", 11, 10),
            "a.atn [########################################] 100 %");
  EXPECT_EQ(simulator::progressLine("a.atn", 0, 0),
            "a.atn [########################################] 100 %");
}

}  // namespace
