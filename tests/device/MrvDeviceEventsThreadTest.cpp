// Passing of messages from the device thread to a busy main thread.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "device/MrvDeviceEvents.h"
#include "navigate/DeviceEvent.h"
#include "simulator/moravin/Framework.h"
#include "tests/support/Build.h"
#include "tests/support/DeviceRecords.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

constexpr std::uint64_t kMessages = kSanitized ? 5'000 : 100'000;

/// The events that arrived on the main thread.
struct Arrivals {
  std::uint64_t count = 0;
  std::uint64_t lastTime = 0;
  bool ordered = true;
  bool onMainThread = true;
  std::thread::id mainThread = std::this_thread::get_id();
};

/// Runs before the plug-in's handler, because it is installed later.
OSStatus watch(EventHandlerCallRef next, EventRef event, void* userData) {
  auto& arrivals = *static_cast<Arrivals*>(userData);
  std::uint64_t time = 0;
  GetEventParameter(event, kDeviceTime, typeSInt64, nullptr, sizeof time, nullptr, &time);
  ++arrivals.count;
  arrivals.ordered = arrivals.ordered && time == arrivals.lastTime + 1;
  arrivals.onMainThread =
      arrivals.onMainThread && std::this_thread::get_id() == arrivals.mainThread;
  arrivals.lastTime = time;
  return CallNextEventHandler(next, event);
}

class MrvDeviceEventsThread : public testing::Test {
 protected:
  MrvDeviceEventsThread() {
    runMainLoopUntilIdle();
    theLog().setSink({});
    constexpr EventTypeSpec kTypes[] = {{kDeviceEventClass, kDeviceAxes},
                                        {kDeviceEventClass, kDeviceButton}};
    theEventManager().install(GetEventDispatcherTarget(), watch, kTypes, &arrivals, nullptr);
  }

  /// Returns a pan or zoom message; every hundredth is a button message.
  static MoravinDeviceState messageNumber(std::uint64_t number) {
    const std::uint16_t client = theFramework().client();
    const auto size = static_cast<std::int16_t>(number % 200);
    MoravinDeviceState record = number % 100 == 0 ? buttonRecord(client, 1, size == 0 ? 0 : 1)
                                                  : axesRecord(client, {size, 50, 7, 0, 0, 0});
    record.time = number;
    return record;
  }

  static void dispatchAll() {
    while (theEventManager().dispatchNext()) {
    }
    theWindowServer().deliverInput();
  }

  static void toggleActivation(bool active) {
    const EventRef event = theEventManager().create(
        kEventClassApplication, active ? kEventAppActivated : kEventAppDeactivated, 0.0);
    theEventManager().dispatch(event);
    theEventManager().release(event);
  }

  Machine machine;
  Arrivals arrivals;
  MrvDeviceEvents connection;
};

TEST_F(MrvDeviceEventsThread, PassesMessagesInOrderWhileTheMainThreadDispatches) {
  std::thread device([] {
    for (std::uint64_t number = 1; number <= kMessages; ++number) {
      theFramework().send(kMoravinMessageDeviceState, messageNumber(number));
    }
  });
  bool active = true;
  while (arrivals.count < kMessages) {
    dispatchAll();
    toggleActivation(active = !active);
    std::this_thread::yield();
  }
  device.join();
  EXPECT_EQ(arrivals.count, kMessages);
  EXPECT_TRUE(arrivals.ordered);
  EXPECT_TRUE(arrivals.onMainThread);
  runMainLoopUntilIdle();
  EXPECT_EQ(theEventManager().live(), 0U);
}

TEST_F(MrvDeviceEventsThread, KeepsMessagesQueuedWhileTheMainThreadDoesNotDispatch) {
  constexpr std::uint64_t kBacklog = 2'000;
  for (std::uint64_t number = 1; number <= kBacklog; ++number) {
    theFramework().send(kMoravinMessageDeviceState, messageNumber(number));
  }
  theThreads().waitUntilIdle();
  EXPECT_EQ(arrivals.count, 0U);
  EXPECT_EQ(theEventManager().queued(), kBacklog);
  dispatchAll();
  EXPECT_EQ(arrivals.count, kBacklog);
  EXPECT_TRUE(arrivals.ordered);
}

}  // namespace
