// Two device threads that start at once, as after two quick restarts.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <optional>
#include <semaphore>

#include "device/MrvDeviceEvents.h"
#include "simulator/macos/RunLoops.h"
#include "simulator/macos/ThreadRules.h"
#include "tests/support/Machine.h"

using namespace simulator;
using namespace testing_support;

namespace {

std::atomic<int> threadsThatAsked{0};
std::counting_semaphore<2> threadsThatListen{0};

}  // namespace

// This program's definitions of two calls take the place of the simulated ones. They hold one
// device thread between its check that no handler is installed and its installation, until the
// other has installed its handler and waits for messages.

EventTargetRef GetEventDispatcherTarget() {
  if (!isMainThread() && threadsThatAsked++ == 0) threadsThatListen.acquire();
  return theEventManager().dispatcher();
}

OSStatus RunCurrentEventLoop(EventTimeout inTimeout) {
  threadsThatListen.release();
  Threads::current()->run(inTimeout);
  return noErr;
}

namespace {

class MrvDeviceEventsTwoThreads : public testing::Test {
 protected:
  /// Starts, stops and starts again before the first device thread has run.
  MrvDeviceEventsTwoThreads() {
    theThreads().holdNewTasks(true);
    connection.emplace();
    connection.reset();
    connection.emplace();
    theThreads().holdNewTasks(false);
    theThreads().waitUntilIdle();
  }

  std::ptrdiff_t logged(const char* what) const {
    const auto lines = machine.lines("handler");
    return std::count_if(lines.begin(), lines.end(), [&](const Json& line) {
      return line["do"] == what && line["types"] == eventTypes({{"appl", 2}, {"appl", 1}});
    });
  }

  static void deactivateHost() {
    const EventRef event =
        theEventManager().create(kEventClassApplication, kEventAppDeactivated, 0.0);
    theEventManager().dispatch(event);
    theEventManager().release(event);
  }

  Machine machine;
  std::optional<MrvDeviceEvents> connection;
};

TEST_F(MrvDeviceEventsTwoThreads, LeaveOneHandlerToWhichAReferenceIsHeld) {
  EXPECT_EQ(threadsThatAsked, 2);
  EXPECT_EQ(theThreads().started(), 2);
  EXPECT_EQ(logged("install"), 1);
  EXPECT_NE(MrvDeviceEvents::m_eventHandler, nullptr);
  EXPECT_EQ(theEventManager().installed(), 2U);  // the other is the receiver of device events
}

TEST_F(MrvDeviceEventsTwoThreads, LeaveNoHandlerAfterTheConnectionHasEnded) {
  connection.reset();
  EXPECT_EQ(logged("remove"), 1);
  EXPECT_EQ(theEventManager().installed(), 1U);
  deactivateHost();
  EXPECT_TRUE(MrvDeviceEvents::m_appIsActive);
}

}  // namespace
