// Tasks, their event loops, and the calls that are confined to the main thread.
#include <Carbon/Carbon.h>
#include <gtest/gtest.h>
#include <objc/message.h>
#include <objc/runtime.h>
#include <pthread.h>
#include <sys/rseq.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "simulator/macos/RunLoops.h"
#include "simulator/macos/ThreadRules.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

constexpr ByteCount kStack = 512000;
constexpr OSStatus kLoopTimedOut = -9875;

class Threads : public testing::Test {
 protected:
  using Body = std::function<void()>;

  static OSStatus run(void* body) {
    (*static_cast<Body*>(body))();
    return noErr;
  }

  /// Starts a task. REQUIRES: `body` outlives it.
  static MPTaskID start(Body& body, ByteCount stack = kStack) {
    MPTaskID task = nullptr;
    EXPECT_EQ(MPCreateTask(run, &body, stack, nullptr, nullptr, nullptr, 0, &task), noErr);
    return task;
  }

  Machine machine;
};

TEST_F(Threads, RunTheirTaskOnAThreadOfTheirOwn) {
  std::thread::id id;
  Body body = [&] { id = std::this_thread::get_id(); };
  start(body);
  theThreads().waitUntilIdle();
  EXPECT_NE(id, std::thread::id());
  EXPECT_NE(id, std::this_thread::get_id());
}

TEST_F(Threads, HaveDifferentTaskIds) {
  Body body = [] {};
  std::set<MPTaskID> ids = {nullptr};
  for (int i = 0; i < 5; ++i) EXPECT_TRUE(ids.insert(start(body)).second);
  theThreads().waitUntilIdle();
}

TEST_F(Threads, AreMisusedIfNothingReceivesTheTaskId) {
  machine.expectMisuse("MPCreateTask: no place for the task's id");
  std::atomic<bool> ran{false};
  Body body = [&] { ran = true; };
  EXPECT_EQ(MPCreateTask(run, &body, kStack, nullptr, nullptr, nullptr, 0, nullptr), noErr);
  theThreads().waitUntilIdle();
  EXPECT_TRUE(ran);
}

TEST_F(Threads, HaveAStackOfTheSizeAskedFor) {
  for (const ByteCount stack : {kStack, 4 * kStack}) {
    std::size_t size = 0;
    Body body = [&] {
      pthread_attr_t attributes;
      pthread_getattr_np(pthread_self(), &attributes);
      pthread_attr_getstacksize(&attributes, &size);
      pthread_attr_destroy(&attributes);
    };
    start(body, stack);
    theThreads().waitUntilIdle();
    EXPECT_GE(size, stack);
    EXPECT_LT(size, 2 * stack);
  }
}

TEST_F(Threads, LeaveTheTaskIdAloneIfTheyCannotStart) {
  constexpr ByteCount kMoreThanTheAddressSpace = ByteCount{1} << 60;
  Body body = [] {};
  MPTaskID task = nullptr;
  EXPECT_EQ(MPCreateTask(run, &body, kMoreThanTheAddressSpace, nullptr, nullptr, nullptr, 0, &task),
            paramErr);
  EXPECT_EQ(task, nullptr);
  theThreads().waitUntilIdle();  // does not wait for the thread that did not start
}

TEST_F(Threads, AreHeldBackUntilTheyAreLetGo) {
  theThreads().holdNewTasks(true);
  std::atomic<bool> ran{false};
  Body body = [&] { ran = true; };
  start(body);
  EXPECT_FALSE(ran);
  theThreads().holdNewTasks(false);
  theThreads().waitUntilIdle();
  EXPECT_TRUE(ran);
}

TEST_F(Threads, RunTheWorkOfTheirLoopInOrderOnThemselves) {
  std::shared_ptr<RunLoop> loop;
  std::thread::id own;
  Body body = [&] {
    own = std::this_thread::get_id();
    loop = simulator::Threads::current();
    RunCurrentEventLoop(-1.0);
  };
  start(body);
  theThreads().waitUntilIdle();
  std::vector<int> order;
  bool onOwnThread = true;
  for (int i = 0; i < 100; ++i) {
    loop->perform([&, i] {
      order.push_back(i);
      onOwnThread = onOwnThread && std::this_thread::get_id() == own;
    });
  }
  theThreads().waitUntilIdle();
  ASSERT_EQ(order.size(), 100U);
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
  EXPECT_TRUE(onOwnThread);
}

TEST_F(Threads, ReportThatTheirLoopsTimeIsOver) {
  bool worked = false;
  simulator::Threads::current()->perform([&] { worked = true; });
  EXPECT_EQ(RunCurrentEventLoop(0.0), kLoopTimedOut);
  EXPECT_TRUE(worked);
}

TEST_F(Threads, AreMainOnlyIfTheyStartedTheProcess) {
  EXPECT_TRUE(isMainThread());
  bool other = true;
  std::thread([&] { other = isMainThread(); }).join();
  EXPECT_FALSE(other);
  bool task = true;
  Body body = [&] { task = isMainThread(); };
  start(body);
  theThreads().waitUntilIdle();
  EXPECT_FALSE(task);
}

TEST_F(Threads, ReportACallThatIsConfinedToTheMainOne) {
  machine.expectMisuse("SomeCall: called on another thread than the main one");
  requireMainThread("SomeCall");
  EXPECT_EQ(theLog().misuses(), 0);
  std::thread([] { requireMainThread("SomeCall"); }).join();
}

TEST_F(Threads, MayMakeTheCallsThatAreBelievedToBeSafe) {
  std::vector<std::string> calls;
  std::thread([&] {
    for (const CallBelievedSafe& exempt : callsBelievedSafe()) {
      requireMainThread(exempt.call);
      EXPECT_FALSE(exempt.reason.empty());
      calls.emplace_back(exempt.call);
    }
  }).join();
  EXPECT_EQ(calls, (std::vector<std::string>{"SetEventParameter", "GetEventDispatcherTarget",
                                             "InstallEventHandler", "GetCurrentKeyModifiers"}));
  EXPECT_EQ(theLog().misuses(), 0);
}

TEST_F(Threads, AreNotRegisteredForRestartableSequences) {
  if (__rseq_size == 0) GTEST_SKIP() << "the C library registers no thread";
  constexpr auto kNone = static_cast<std::uint32_t>(RSEQ_CPU_ID_UNINITIALIZED);
  const auto processor = [] {
    const char* const place = static_cast<char*>(__builtin_thread_pointer()) + __rseq_offset;
    return std::uint32_t{reinterpret_cast<const volatile struct rseq*>(place)->cpu_id};
  };
  EXPECT_NE(processor(), kNone) << "the main thread is registered";
  std::uint32_t inTask = 0;
  Body body = [&] { inTask = processor(); };
  start(body);
  theThreads().waitUntilIdle();
  EXPECT_EQ(inTask, kNone);
}

TEST_F(Threads, MisuseAppKitUnlessTheyAreTheMainOne) {
  machine.expectMisuses(testing::ElementsAre(
      "[NSApplication class sharedApplication]: called on another thread than the main one",
      "[NSApplication mainWindow]: called on another thread than the main one"));
  using Send = id (*)(id, SEL);
  const auto send = reinterpret_cast<Send>(&objc_msgSend);
  const auto application = reinterpret_cast<id>(objc_getClass("NSApplication"));
  const SEL shared = sel_registerName("sharedApplication");
  const SEL mainWindow = sel_registerName("mainWindow");
  const id window = send(send(application, shared), mainWindow);
  EXPECT_EQ(theLog().misuses(), 0);
  std::thread([&] { EXPECT_EQ(send(send(application, shared), mainWindow), window); }).join();
}

TEST_F(Threads, MisuseScreenRefreshesUnlessTheyAreTheMainOne) {
  machine.expectMisuses(testing::ElementsAre(
      "CGRegisterScreenRefreshCallback: called on another thread than the main one",
      "CGUnregisterScreenRefreshCallback: called on another thread than the main one"));
  const CGScreenRefreshCallback callback = [](std::uint32_t, const CGRect*, void*) {};
  std::thread([&] {
    CGRegisterScreenRefreshCallback(callback, nullptr);
    CGUnregisterScreenRefreshCallback(callback, nullptr);
  }).join();
}

}  // namespace
