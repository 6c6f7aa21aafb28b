#include <gtest/gtest.h>

#include <type_traits>

#include "device/MrvDeviceEvents.h"
#include "simulator/macos/RunLoops.h"
#include "simulator/moravin/Framework.h"
#include "tests/support/DeviceRecords.h"
#include "tests/support/LowerHandler.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

static_assert(std::is_empty_v<MrvDeviceEvents>, "all state is the class's own");
static_assert(!std::is_polymorphic_v<MrvDeviceEvents>);

Json handlerLine(const char* what, Json types) {
  return {{"t", 0}, {"what", "handler"}, {"do", what}, {"types", std::move(types)}};
}

const Json kApplicationTypes = eventTypes({{"appl", 2}, {"appl", 1}});
const Json kDeviceTypes = eventTypes({{"mrvE", 1}, {"mrvE", 2}, {"mrvE", 5}});

class MrvDeviceEventsConnection : public testing::Test {
 protected:
  MrvDeviceEventsConnection() { machine.drain(); }

  /// Holds the device thread back until the constructor has returned, which fixes the log's order.
  void connect() {
    theThreads().holdNewTasks(true);
    connection.emplace();
    theThreads().holdNewTasks(false);
    runMainLoopUntilIdle();
  }
  void disconnect() { connection.reset(); }

  /// Dispatches a system event and returns whether it reached the host.
  bool send(OSType eventClass, UInt32 kind) {
    const EventRef event = theEventManager().create(eventClass, kind, 0.0);
    const Dispatched dispatched = theEventManager().dispatch(event);
    theEventManager().release(event);
    EXPECT_EQ(dispatched.status, eventNotHandledErr);
    return dispatched.reachedHost;
  }

  std::size_t postedBy(MoravinDeviceState record) {
    machine.drain();
    theFramework().send(kMoravinMessageDeviceState, record);
    theThreads().waitUntilIdle();
    const std::size_t waiting = theEventManager().queued();
    runMainLoopUntilIdle();
    return waiting;
  }

  Machine machine;
  std::optional<MrvDeviceEvents> connection;
};

TEST_F(MrvDeviceEventsConnection, StartsWithNothingRegisteredAndTheHostActive) {
  EXPECT_EQ(MrvDeviceEvents::m_clientID, 0);
  EXPECT_EQ(MrvDeviceEvents::m_mainEventQueue, nullptr);
  EXPECT_EQ(MrvDeviceEvents::m_eventHandler, nullptr);
  EXPECT_TRUE(MrvDeviceEvents::m_appIsActive);
}

TEST_F(MrvDeviceEventsConnection, InstallsTheReceiverBeforeTheThreadStartsAndRegistersInOrder) {
  connect();
  std::vector<Json> lines = machine.drain();
  std::erase_if(lines, [](const Json& l) { return l["what"] == "suite" || l["what"] == "get"; });
  const Json registered = {
      {"t", 0},          {"what", "framework"}, {"do", "register"}, {"signature", "8BIM"},
      {"name", nullptr}, {"mode", 1},           {"mask", 0x3F00},   {"client", 1}};
  const std::vector<Json> expected = {
      {{"t", 0}, {"what", "suppression"}, {"seconds", 0.1}},
      {{"t", 0}, {"what", "refreshCallback"}, {"do", "register"}},
      handlerLine("install", kDeviceTypes),
      {{"t", 0}, {"what", "thread"}, {"do", "start"}, {"stack", 512000}},
      {{"t", 0}, {"what", "framework"}, {"do", "install"}, {"result", 0}},
      registered,
      handlerLine("install", kApplicationTypes)};
  EXPECT_EQ(lines, expected);
  EXPECT_EQ(MrvDeviceEvents::m_clientID, 1);
  EXPECT_EQ(MrvDeviceEvents::m_mainEventQueue, GetMainEventQueue());
  EXPECT_NE(MrvDeviceEvents::m_eventHandler, nullptr);
}

TEST_F(MrvDeviceEventsConnection, RemovesUnregistersAndCleansUpAtItsEndAndKeepsTheSharedWords) {
  connect();
  const EventHandlerRef handler = MrvDeviceEvents::m_eventHandler;
  machine.drain();
  disconnect();
  const std::vector<Json> expected = {
      handlerLine("remove", kApplicationTypes),
      {{"t", 0}, {"what", "framework"}, {"do", "unregister"}, {"client", 1}},
      {{"t", 0}, {"what", "framework"}, {"do", "cleanup"}}};
  EXPECT_EQ(machine.drain(), expected);
  EXPECT_EQ(MrvDeviceEvents::m_clientID, 1);
  EXPECT_EQ(MrvDeviceEvents::m_eventHandler, handler);
  EXPECT_EQ(MrvDeviceEvents::m_mainEventQueue, GetMainEventQueue());
}

TEST_F(MrvDeviceEventsConnection, OnlyCleansUpIfItEndsBeforeTheThreadHasRun) {
  theThreads().holdNewTasks(true);
  connection.emplace();
  machine.drain();
  disconnect();
  const std::vector<Json> expected = {{{"t", 0}, {"what", "framework"}, {"do", "cleanup"}}};
  EXPECT_EQ(machine.drain(), expected);
  theThreads().holdNewTasks(false);
  runMainLoopUntilIdle();
}

TEST_F(MrvDeviceEventsConnection, RegistersNothingAndIgnoresMessagesAfterAFailedInstallation) {
  theFaults().add({"Framework.Install", -1, 0, 1});
  connect();
  const auto lines = machine.lines("framework");
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0]["result"], -1);
  EXPECT_EQ(MrvDeviceEvents::m_clientID, 0);
  EXPECT_NE(MrvDeviceEvents::m_eventHandler, nullptr);
  EXPECT_EQ(postedBy(axesRecord(1, {0, 9, 0, 0, 0, 0})), 0U);
  machine.drain();
  disconnect();
  EXPECT_EQ(machine.drain().size(), 2U);  // handler removed and cleaned up, but not unregistered
}

TEST_F(MrvDeviceEventsConnection, TreatsTheHostAsActiveBeforeTheFirstActivationEvent) {
  connect();
  EXPECT_TRUE(MrvDeviceEvents::m_appIsActive);
}

TEST_F(MrvDeviceEventsConnection, FollowsTheHostsActivationAndPassesTheEventsOn) {
  connect();
  EXPECT_TRUE(send(kEventClassApplication, kEventAppDeactivated));
  EXPECT_FALSE(MrvDeviceEvents::m_appIsActive);
  EXPECT_TRUE(send(kEventClassApplication, kEventAppDeactivated));
  EXPECT_FALSE(MrvDeviceEvents::m_appIsActive);
  EXPECT_TRUE(send(kEventClassApplication, kEventAppActivated));
  EXPECT_TRUE(MrvDeviceEvents::m_appIsActive);
}

/// Also installs the handler for events for which the plug-in does not install it.
TEST_F(MrvDeviceEventsConnection, PassesEventsOfOtherKindsOnWithoutEffect) {
  const std::vector<EventTypeSpec> types = {{kEventClassApplication, 0},
                                            {kEventClassApplication, 3},
                                            {kEventClassApplication, 101},
                                            {kEventClassMouse, 1},
                                            {kEventClassMouse, 2}};
  theEventManager().install(GetEventDispatcherTarget(), MrvDeviceEvents::applicationEventHandler,
                            types, nullptr, nullptr);
  for (const bool active : {true, false}) {
    MrvDeviceEvents::m_appIsActive = active;
    for (const EventTypeSpec& type : types) {
      EXPECT_TRUE(send(type.eventClass, type.eventKind));
      EXPECT_EQ(MrvDeviceEvents::m_appIsActive, active);
    }
  }
}

TEST_F(MrvDeviceEventsConnection, PassesActivationToTheHandlersBelowAndReturnsTheirStatus) {
  LowerHandler lower({{kEventClassApplication, kEventAppDeactivated},
                      {kEventClassApplication, kEventAppActivated}});
  connect();
  EXPECT_TRUE(lower.receives(kEventClassApplication, kEventAppDeactivated));
  EXPECT_FALSE(MrvDeviceEvents::m_appIsActive);
  EXPECT_TRUE(lower.receives(kEventClassApplication, kEventAppActivated));
  EXPECT_TRUE(MrvDeviceEvents::m_appIsActive);
}

TEST_F(MrvDeviceEventsConnection, RegistersANewClientButNoNewApplicationHandlerAtASecondStart) {
  connect();
  send(kEventClassApplication, kEventAppDeactivated);
  disconnect();
  machine.drain();
  connect();
  EXPECT_EQ(MrvDeviceEvents::m_clientID, 2);
  for (const Json& line : machine.drain()) EXPECT_NE(line["what"], "handler") << line.dump();
  EXPECT_EQ(theEventManager().installed(), 1U);  // the receiver of device events
  // Without the handler the value no longer changes.
  EXPECT_TRUE(send(kEventClassApplication, kEventAppActivated));
  EXPECT_FALSE(MrvDeviceEvents::m_appIsActive);
}

TEST_F(MrvDeviceEventsConnection, DeliversEachMessageOnceAfterASecondStart) {
  connect();
  disconnect();
  connect();
  EXPECT_EQ(postedBy(axesRecord(2, {0, 9, 0, 0, 0, 0})), 1U);
  EXPECT_EQ(postedBy(axesRecord(1, {0, 9, 0, 0, 0, 0})), 0U);
}

TEST_F(MrvDeviceEventsConnection, RemovesNoOtherHandlerThroughTheOldReferenceAtASecondEnd) {
  connect();
  disconnect();
  connect();
  machine.drain();
  disconnect();
  for (const Json& line : machine.drain()) EXPECT_EQ(line["what"], "framework") << line.dump();
  EXPECT_EQ(theEventManager().installed(), 1U);
}

TEST_F(MrvDeviceEventsConnection, InstallsTheApplicationHandlerOnce) {
  MrvDeviceEvents::installEventHandler();
  const EventHandlerRef first = MrvDeviceEvents::m_eventHandler;
  MrvDeviceEvents::installEventHandler();
  EXPECT_EQ(MrvDeviceEvents::m_eventHandler, first);
  EXPECT_EQ(machine.drain(), std::vector<Json>{handlerLine("install", kApplicationTypes)});
}

}  // namespace
