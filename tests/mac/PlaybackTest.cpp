#include <gtest/gtest.h>

#include <algorithm>

#include "mac/Playback.h"
#include "simulator/scenario/JsonFile.h"
#include "simulator/scenario/ScenarioReader.h"

namespace {

using simulator::BadScenario;
using simulator::parseScenario;

TEST(MacPlayback, AcceptsCallsAndDeviceMessages) {
  const std::string file = MRV_MAC "/probe.json";
  const auto scenario = parseScenario(simulator::readTextFile(file), file);
  EXPECT_FALSE(scenario.steps.empty());
  EXPECT_NO_THROW(mrvmac::requirePlayable(scenario, file));
}

TEST(MacPlayback, RefusesAStepThatMovesTheMachine) {
  const auto scenario =
      parseScenario(R"({"steps": [{"axes": [0,1,0,0,0,0]}, {"mouse": [1, 2]}]})", "file.json");
  try {
    mrvmac::requirePlayable(scenario, "file.json");
    ADD_FAILURE() << "accepted";
  } catch (const BadScenario& error) {
    EXPECT_STREQ(error.what(),
                 "file.json: /steps/1: only calls and device messages can be played on a real Mac");
  }
}

TEST(MacPlayback, FillsADeviceRecord) {
  simulator::DeviceMessage message = {};
  message.command = 2;
  message.value = 7;
  message.axes = {1, -2, 3, -4, 5, -6};
  message.button = 9;
  const MoravinDeviceState state = mrvmac::recordOf(message, 3, 12);
  EXPECT_EQ(state.client, 12);
  EXPECT_EQ(state.command, 2);
  EXPECT_EQ(state.value, 7u);
  EXPECT_EQ(std::uint64_t{state.time}, 3000000U);  // the record is packed
  EXPECT_TRUE(std::equal(message.axes.begin(), message.axes.end(), state.axis));
  EXPECT_EQ(state.button, 9);
}

TEST(MacPlayback, KeepsTheClientOfAMessageForAnother) {
  simulator::DeviceMessage message = {};
  message.client = std::uint16_t{5};
  EXPECT_EQ(mrvmac::recordOf(message, 0, 12).client, 5);
}

}  // namespace
