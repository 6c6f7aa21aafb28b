#include <MoravinClient/MoravinClient.h>
#include <gtest/gtest.h>

#include "device/MrvDeviceEvents.h"
#include "simulator/macos/RunLoops.h"
#include "tests/support/Calls.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

class MrvDeviceEventsWithoutFramework : public testing::Test {
 protected:
  Machine machine;
};

TEST_F(MrvDeviceEventsWithoutFramework, FindsTheFourFunctionsNull) {
  EXPECT_FALSE(InstallMoravinHandlers);
  EXPECT_FALSE(RegisterMoravinClient);
  EXPECT_FALSE(UnregisterMoravinClient);
  EXPECT_FALSE(CleanupMoravinHandlers);
}

TEST_F(MrvDeviceEventsWithoutFramework, DoesNothingAndStartsNoThread) {
  {
    const MrvDeviceEvents connection;
  }
  EXPECT_TRUE(machine.lines().empty());
  EXPECT_EQ(theThreads().started(), 0);
  EXPECT_EQ(MrvDeviceEvents::m_clientID, 0);
  EXPECT_EQ(MrvDeviceEvents::m_mainEventQueue, nullptr);
  EXPECT_EQ(theEventManager().installed(), 0U);
}

TEST_F(MrvDeviceEventsWithoutFramework, LetsThePlugInStartAndStop) {
  EXPECT_EQ(startUp(), 0);
  EXPECT_NE(gMrvDeviceEvents, nullptr);
  EXPECT_EQ(shutDown(), 0);
  EXPECT_EQ(gMrvDeviceEvents, nullptr);
  EXPECT_TRUE(machine.lines().empty());
}

}  // namespace
