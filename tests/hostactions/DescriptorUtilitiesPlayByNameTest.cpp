// Playing a recorded action by its name.
#include <HostTerms.h>
#include <gtest/gtest.h>

#include "hostactions/DescriptorUtilities.h"
#include "tests/hostactions/RecordingHost.h"

using namespace simulator;
using namespace testing_support;

namespace {

Json playLine(const char* set, const char* action, int result) {
  Json descriptor = Json::parse(R"([{"key": "null", "type": "obj ", "value": [
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
