// Arguments of the platform's calls that have no effect in the simulated Mac but have one on a Mac.
#include <ApplicationServices/ApplicationServices.h>
#include <Carbon/Carbon.h>
#include <CoreServices/CoreServices.h>
#include <MoravinClient/MoravinClient.h>
#include <dlfcn.h>
#include <gmock/gmock.h>

#include <atomic>
#include <tuple>
#include <utility>
#include <vector>

#include "device/MrvDeviceEvents.h"
#include "simulator/macos/RunLoops.h"
#include "simulator/macos/VariadicCalls.h"
#include "simulator/moravin/Framework.h"
#include "tests/support/Calls.h"
#include "tests/support/DeviceRecords.h"
#include "tests/support/Machine.h"

namespace {

using testing::Each;
using testing::ElementsAre;

/// The arguments of one call of CreateEvent, without the place of the result.
using Creation = std::tuple<CFAllocatorRef, OSType, UInt32, EventTime, EventAttributes>;

/// The arguments of one call of MPCreateTask, without the place of the result.
using Task = std::tuple<TaskProc, void*, ByteCount, MPQueueID, void*, void*, MPTaskOptions>;

std::vector<Creation> creations;
std::vector<Task> tasks;
std::atomic<EventTimeout> loopTimeout = 0.0;
std::vector<std::pair<MoravinDeviceHandler, MoravinDeviceHandler>> deviceHandlers;
std::vector<CGEventSourceRef> eventSources;

/// The simulated Mac's definition of a call that this program defines itself.
template <class Call>
Call* simulated(Call&, const char* name) {
  return reinterpret_cast<Call*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// This program's definitions of six calls take the place of the simulated ones. They keep the
// arguments and pass the call on. The tests turn one wheel at a time.

OSStatus CreateEvent(CFAllocatorRef allocator, OSType inClassID, UInt32 inKind, EventTime inWhen,
                     EventAttributes inAttributes, EventRef* outEvent) {
  creations.emplace_back(allocator, inClassID, inKind, inWhen, inAttributes);
  return simulated(CreateEvent, "CreateEvent")(allocator, inClassID, inKind, inWhen, inAttributes,
                                               outEvent);
}

OSStatus MPCreateTask(TaskProc entryPoint, void* parameter, ByteCount stackSize,
                      MPQueueID notifyQueue, void* terminationParameter1,
                      void* terminationParameter2, MPTaskOptions options, MPTaskID* task) {
  tasks.emplace_back(entryPoint, parameter, stackSize, notifyQueue, terminationParameter1,
                     terminationParameter2, options);
  return simulated(MPCreateTask, "MPCreateTask")(entryPoint, parameter, stackSize, notifyQueue,
                                                 terminationParameter1, terminationParameter2,
                                                 options, task);
}

OSStatus RunCurrentEventLoop(EventTimeout inTimeout) {
  loopTimeout = inTimeout;
  return simulated(RunCurrentEventLoop, "RunCurrentEventLoop")(inTimeout);
}

std::int16_t InstallMoravinHandlers(MoravinMessageHandler messageHandler,
                                    MoravinDeviceHandler addedHandler,
                                    MoravinDeviceHandler removedHandler) {
  deviceHandlers.emplace_back(addedHandler, removedHandler);
  return simulated(InstallMoravinHandlers, "InstallMoravinHandlers")(messageHandler, addedHandler,
                                                                     removedHandler);
}

CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode virtualKey, bool keyDown) {
  eventSources.push_back(source);
  return simulated(CGEventCreateKeyboardEvent, "CGEventCreateKeyboardEvent")(source, virtualKey,
                                                                             keyDown);
}

CGEventRef CGEventCreateScrollWheelEvent(CGEventSourceRef source, CGScrollEventUnit units,
                                         std::uint32_t, std::int32_t wheel1, ...) {
  eventSources.push_back(source);
  return simulator::createScrollWheelEvent(units, &wheel1, 1);
}

namespace {

using namespace simulator;
using namespace testing_support;

class PlatformCalls : public testing::Test {
 protected:
  PlatformCalls() {
    startUp();
    runMainLoopUntilIdle();
  }
  ~PlatformCalls() override { shutDown(); }

  void send(const MoravinDeviceState& record) {
    theFramework().send(kMoravinMessageDeviceState, record);
    runMainLoopUntilIdle();
  }

  Machine machine;
};

TEST_F(PlatformCalls, CreateEventsThatCountAsTheUsersAndHappenNow) {
  send(axesRecord(1, {0, 0, 0, 0, 600, 0}));
  send(buttonRecord(1, 1, 1));
  send(commandRecord(1, 1));
  const auto event = [](OSType eventClass, UInt32 kind) {
    return Creation(nullptr, eventClass, kind, 0.0, kEventAttributeUserEvent);
  };
  EXPECT_THAT(creations,
              ElementsAre(event(fourCharCode("mrvE"), 2), event(fourCharCode("keyb"), 1),
                          event(fourCharCode("keyb"), 3), event(fourCharCode("mous"), 5),
                          event(fourCharCode("mrvE"), 1), event(fourCharCode("mrvE"), 5)));
}

TEST_F(PlatformCalls, StartOneThreadWithoutParametersNotificationOrOptions) {
  EXPECT_THAT(tasks, ElementsAre(Task(MrvDeviceEvents::threadProc, nullptr, 512000, nullptr,
                                      nullptr, nullptr, 0)));
}

TEST_F(PlatformCalls, RunTheThreadsEventLoopWithoutEnd) {
  theThreads().waitUntilIdle();
  EXPECT_EQ(loopTimeout, -1.0);
}

TEST_F(PlatformCalls, InstallNoHandlersForDevicesThatComeAndGo) {
  EXPECT_THAT(deviceHandlers, ElementsAre(std::pair<MoravinDeviceHandler, MoravinDeviceHandler>()));
}

/// With a source, the platform would add that source's modifiers to the event.
TEST_F(PlatformCalls, SynthesizeKeysAndWheelsWithoutASource) {
  send(axesRecord(1, {0, 11, 0, 0, 0, 0}));
  EXPECT_EQ(machine.lines("wheel").size() + machine.lines("key").size(), eventSources.size());
  EXPECT_EQ(eventSources.size(), 3U);
  EXPECT_THAT(eventSources, Each(nullptr));
}

}  // namespace
