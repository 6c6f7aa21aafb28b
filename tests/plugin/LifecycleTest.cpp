// Repeated start-up and shut-down in one process.
#include <gtest/gtest.h>

#include <algorithm>

#include "device/MrvDeviceEvents.h"
#include "simulator/macos/EventManager.h"
#include "simulator/macos/RunLoops.h"
#include "simulator/moravin/Framework.h"
#include "tests/support/Calls.h"
#include "tests/support/DeviceRecords.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

constexpr int kRounds = 1000;

class Lifecycle : public testing::Test {
 protected:
  std::size_t handlerInstalls(const char* eventClass) const {
    const auto lines = machine.lines("handler");
    return static_cast<std::size_t>(std::count_if(lines.begin(), lines.end(), [&](const Json& l) {
      return l["do"] == "install" && l["types"][0][0] == eventClass;
    }));
  }

  std::size_t posted(const MoravinDeviceState& record) {
    machine.drain();
    theFramework().send(kMoravinMessageDeviceState, record);
    runMainLoopUntilIdle();
    const auto lines = machine.drain();
    return static_cast<std::size_t>(std::count_if(
        lines.begin(), lines.end(), [](const Json& l) { return l["what"] == "posted"; }));
  }

  std::size_t posted(const char* eventClass) const {
    const auto lines = machine.lines("posted");
    return static_cast<std::size_t>(std::count_if(
        lines.begin(), lines.end(), [&](const Json& l) { return l["class"] == eventClass; }));
  }

  Machine machine;
};

TEST_F(Lifecycle, SurvivesAThousandStartUpsAndShutDowns) {
  for (int round = 1; round <= kRounds; ++round) {
    ASSERT_EQ(startUp(), 0);
    runMainLoopUntilIdle();
    ASSERT_EQ(theFramework().client(), round);
    ASSERT_EQ(MrvDeviceEvents::m_clientID, round);
    ASSERT_EQ(shutDown(), 0);
    ASSERT_EQ(gMrvDeviceEvents, nullptr);
    ASSERT_EQ(theFramework().client(), 0);
  }
  EXPECT_EQ(theThreads().started(), kRounds);
  // The navigator and the application handler are created once per process.
  EXPECT_EQ(handlerInstalls("mrvE"), 1U);
  EXPECT_EQ(handlerInstalls("appl"), 1U);
  EXPECT_EQ(theEventManager().installed(), 1U);
  EXPECT_EQ(theHost().suitesHeld(), 0);
  EXPECT_EQ(theHost().objectsOwned(), 0U);
}

TEST_F(Lifecycle, PostsAMessageOnceAfterManyRounds) {
  for (int round = 0; round < 20; ++round) {
    startUp();
    runMainLoopUntilIdle();
    shutDown();
  }
  startUp();
  runMainLoopUntilIdle();
  EXPECT_EQ(posted(axesRecord(21, {0, 11, 0, 0, 0, 0})), 1U);
  EXPECT_EQ(posted(axesRecord(20, {0, 11, 0, 0, 0, 0})), 0U);
  shutDown();
}

TEST_F(Lifecycle, AllowsAShutDownBeforeTheDeviceThreadIsReady) {
  for (int round = 0; round < 200; ++round) {
    ASSERT_EQ(startUp(), 0);
    ASSERT_EQ(shutDown(), 0);
  }
  runMainLoopUntilIdle();
  EXPECT_EQ(theThreads().started(), 200);
  EXPECT_EQ(handlerInstalls("mrvE"), 1U);
  EXPECT_EQ(theHost().suitesHeld(), 0);
}

/// The receiver of device events stays installed until the process ends.
TEST_F(Lifecycle, StillPostsTheTickOfASampleThatWaitsWhileThePlugInShutsDown) {
  startUp();
  runMainLoopUntilIdle();
  theFramework().send(kMoravinMessageDeviceState, axesRecord(1, {0, 11, 0, 0, 0, 0}));
  theThreads().waitUntilIdle();
  ASSERT_EQ(theEventManager().queued(), 1U);
  EXPECT_EQ(shutDown(), 0);
  EXPECT_TRUE(machine.lines("wheel").empty());
  machine.drain();
  runMainLoopUntilIdle();
  EXPECT_EQ(machine.lines("wheel").size(), 1U);
  EXPECT_EQ(theHost().suitesHeld(), 0);
  EXPECT_EQ(theEventManager().live(), 0U);
}

/// Unloading releases them, or the next shut-down.
TEST_F(Lifecycle, HoldsSuitesAgainAfterATwistThatWaitsWhileThePlugInShutsDown) {
  startUp();
  runMainLoopUntilIdle();
  theFramework().send(kMoravinMessageDeviceState, axesRecord(1, {0, 0, 0, 0, 600, 0}));
  theThreads().waitUntilIdle();
  EXPECT_EQ(shutDown(), 0);
  EXPECT_EQ(theHost().suitesHeld(), 0);
  EXPECT_EQ(posted("keyb"), 0U);
  runMainLoopUntilIdle();
  EXPECT_EQ(posted("keyb"), 2U);
  EXPECT_EQ(theHost().suitesHeld(), 3);
  EXPECT_EQ(shutDown(), 0);
  EXPECT_EQ(theHost().suitesHeld(), 0);
}

TEST_F(Lifecycle, IgnoresRepeatedStartUpsAndShutDowns) {
  for (int i = 0; i < 3; ++i) EXPECT_EQ(startUp(), 0);
  runMainLoopUntilIdle();
  for (int i = 0; i < 3; ++i) EXPECT_EQ(shutDown(), 0);
  EXPECT_EQ(theThreads().started(), 1);
  EXPECT_EQ(gMrvDeviceEvents, nullptr);
}

}  // namespace
