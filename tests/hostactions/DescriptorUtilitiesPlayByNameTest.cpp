// Playing a recorded action by its name.
#include <HostTerms.h>
#include <gtest/gtest.h>

#include "hostactions/DescriptorUtilities.h"
#include "simulator/scenario/ScenarioReader.h"
#include "tests/actionfiles/ActionFileWriter.h"
#include "tests/hostactions/RecordingHost.h"
#include "tests/support/Process.h"

using namespace simulator;
using namespace testing_support;

namespace {

Json playLine(const char* set, const char* action, int result) {
  Json descriptor = jsonOf(R"([{"key": "null", "type": "obj ", "value": [
      {"form": "name", "class": "Actn"}, {"form": "name", "class": "ASet"}]}])");
  descriptor[0]["value"][0]["value"] = action;
  descriptor[0]["value"][1]["value"] = set;
  return {{"t", 0},      {"what", "play"},  {"event", "Ply "}, {"descriptor", descriptor},
          {"dialog", 2}, {"result", result}};
}

class DescriptorUtilitiesPlayByName : public testing::Test {
 protected:
  Action& firstAction() { return theHost().model().actionSets[0].actions[0]; }

  Json onlyPlay() {
    const auto plays = machine_.lines("play");
    EXPECT_EQ(plays.size(), 1U);
    return plays.empty() ? Json() : plays.front();
  }

  Machine machine_;
};

}  // namespace

TEST_F(DescriptorUtilitiesPlayByName, PlaysTheActionOfTheSetWithoutADialog) {
  EXPECT_EQ(PIUActionsPlayByName("Default Actions", "Wood Frame"), 0);
  EXPECT_EQ(onlyPlay(), playLine("Default Actions", "Wood Frame", 0));
  EXPECT_EQ(theHost().model().documents[0].history.back(), "Wood Frame");
}

TEST_F(DescriptorUtilitiesPlayByName, ReturnsMinus1IfTheActionLeavesAMessage) {
  firstAction().message = "It broke.";
  EXPECT_EQ(PIUActionsPlayByName("Default Actions", "Vignette"), -1);
}

TEST_F(DescriptorUtilitiesPlayByName, ReturnsTheErrorOfAnActionThatFails) {
  firstAction().error = -128;
  EXPECT_EQ(PIUActionsPlayByName("Default Actions", "Vignette"), -128);
  EXPECT_EQ(onlyPlay(), playLine("Default Actions", "Vignette", -128));
}

TEST_F(DescriptorUtilitiesPlayByName, ReturnsTheHostsErrorForNoSuchActionOrSet) {
  EXPECT_EQ(PIUActionsPlayByName("Default Actions", "vignette"), -1728);
  EXPECT_EQ(PIUActionsPlayByName("Other Actions", "Vignette"), -1728);
}

TEST_F(DescriptorUtilitiesPlayByName, ReturnsTheHostsErrorForAMissingNameAndPlaysNothing) {
  EXPECT_EQ(PIUActionsPlayByName("Default Actions", nullptr), -50);
  EXPECT_EQ(PIUActionsPlayByName(nullptr, "Vignette"), -50);
  EXPECT_TRUE(machine_.lines("play").empty());
}

TEST_F(DescriptorUtilitiesPlayByName, ReturnsTheErrorOfCheckingTheResult) {
  theFaults().add({"ActionDescriptor.HasKey", -1702, 0, 1});
  EXPECT_EQ(PIUActionsPlayByName("Default Actions", "Vignette"), -1702);
}

namespace {

/// A step that selects a tool.
actionfiles::Step selectStep(const char* tool) {
  actionfiles::Reference target;
  target.push_back({actionfiles::kClassForm, className(stringId(tool)), {}});
  std::vector<actionfiles::Item> items;
  items.push_back({codeId("null"), valueOf(actionfiles::kReference, std::move(target))});
  return stepOf(stringId("select"), "Select", std::move(items));
}

/// The machine of a scenario whose host has an action file.
class DescriptorUtilitiesActionFile : public DescriptorUtilitiesPlayByName {
 protected:
  DescriptorUtilitiesActionFile() {
    RecordedSet set = setOf({});
    set.head.name = textOf(u"Werkzeuge \u00E4");
    set.actions[0].head.name = textOf(u"Leer");
    set.actions.push_back({{.name = textOf(u"Eraser")}, {}});
    set.actions[1].steps.push_back(stepOf(stringId("feather"), "Feather", {}));
    set.actions[1].steps.push_back(selectStep("eraserTool"));
    writeFile(folder_.file("tools.atn"), written(set));
    writeFile(folder_.file("scenario.json"), R"({"host": {"actions": ["tools.atn"]}})");
    scenario_ = ScenarioFile(folder_.file("scenario.json")).setup();
    player_.emplace(scenario_, home_);
  }

  TemporaryFolder folder_;
  TemporaryHome home_;
  Scenario scenario_;
  std::optional<Player> player_;
};

}  // namespace

TEST_F(DescriptorUtilitiesActionFile, PlaysTheStepsOfAnActionOfTheFile) {
  EXPECT_EQ(PIUActionsPlayByName("Werkzeuge \u00E4", "Eraser"), 0);
  EXPECT_EQ(theHost().tool(), "eraserTool");
  const auto plays = machine_.lines("play");
  ASSERT_EQ(plays.size(), 3U);
  EXPECT_EQ(plays[0]["result"], -25920) << "the model does not know the event";
  EXPECT_EQ(plays[1]["recorded"]["step"], 2);
  EXPECT_EQ(plays[2], playLine("Werkzeuge \u00E4", "Eraser", 0));
  EXPECT_EQ(PIUActionsPlayByName("Default Actions", "Vignette"), -1728);
}

TEST_F(DescriptorUtilitiesActionFile, NamesTheActionsOfTheFile) {
  char name[64] = {};
  std::uint32_t length = sizeof name - 1;
  EXPECT_EQ(PIUActionsGetName(1, 2, name, &length), 0);
  EXPECT_STREQ(name, "Eraser");
  EXPECT_EQ(PIUActionsGetName("Werkzeuge \u00E4", 1, name, &length), 0);
  EXPECT_STREQ(name, "Leer");
  EXPECT_EQ(PIUActionsGetName(2, 1, name, &length), -1728);
}
