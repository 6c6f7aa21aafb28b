// The queue and the handlers of the simulated event manager.
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <thread>
#include <utility>
#include <vector>

#include "simulator/macos/EventManager.h"
#include "tests/simulator/macos/Handlers.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

constexpr EventParamName kNumber = fourCharCode("numb");

void post(EventRef event, EventPriority priority) {
  EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event, priority), noErr);
  ReleaseEvent(event);
}

void postNumber(int thread, UInt32 number, EventPriority priority) {
  const EventRef event = makeEvent(static_cast<UInt32>(thread));
  SetEventParameter(event, kNumber, typeUInt32, sizeof number, &number);
  post(event, priority);
}

UInt32 numberOf(EventRef event) {
  UInt32 number = 0;
  GetEventParameter(event, kNumber, typeUInt32, nullptr, sizeof number, nullptr, &number);
  return number;
}

void dispatchAll() {
  while (theEventManager().dispatchNext()) {
  }
}

class EventManagerQueue : public testing::Test {
 protected:
  /// Dispatches all queued events and returns their kinds in order.
  static std::vector<UInt32> dispatched() {
    std::vector<UInt32> kinds;
    theEventManager().setApplication([&](EventRef event) { kinds.push_back(GetEventKind(event)); });
    dispatchAll();
    theEventManager().setApplication([](EventRef) {});
    return kinds;
  }

  Machine machine;
};

TEST_F(EventManagerQueue, GivesOutHigherPrioritiesFirst) {
  post(makeEvent(1), kEventPriorityLow);
  post(makeEvent(2), kEventPriorityStandard);
  post(makeEvent(3), kEventPriorityHigh);
  post(makeEvent(4), kEventPriorityStandard);
  EXPECT_EQ(dispatched(), (std::vector<UInt32>{3, 2, 4, 1}));
}

TEST_F(EventManagerQueue, GivesOutEventsOfOnePriorityInTheOrderOfPosting) {
  for (const EventPriority priority :
       {kEventPriorityLow, kEventPriorityStandard, kEventPriorityHigh}) {
    for (UInt32 kind = 1; kind <= 5; ++kind) post(makeEvent(kind), priority);
    EXPECT_EQ(dispatched(), (std::vector<UInt32>{1, 2, 3, 4, 5})) << priority;
  }
}

TEST_F(EventManagerQueue, GivesOutAHighPriorityEventPostedDuringADispatchNext) {
  post(makeEvent(1), kEventPriorityHigh);
  post(makeEvent(2), kEventPriorityStandard);
  const Handler<1> poster([](EventHandlerCallRef, EventRef) {
    post(makeEvent(3), kEventPriorityHigh);
    return eventNotHandledErr;
  });
  EXPECT_EQ(dispatched(), (std::vector<UInt32>{1, 3, 2}));
}

TEST_F(EventManagerQueue, RefusesAnEventThatItHoldsAlready) {
  const EventRef event = makeEvent(7);
  EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event, kEventPriorityStandard), noErr);
  for (const EventPriority priority :
       {kEventPriorityLow, kEventPriorityStandard, kEventPriorityHigh}) {
    EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event, priority), eventAlreadyPostedErr);
  }
  EXPECT_EQ(machine.lines("posted").size(), 1U);
  ReleaseEvent(event);
  EXPECT_EQ(theEventManager().live(), 1U);
  EXPECT_EQ(dispatched(), std::vector<UInt32>{7});
  EXPECT_EQ(theEventManager().live(), 0U);  // the refused posts retained nothing
}

TEST_F(EventManagerQueue, TakesAnEventAgainAfterItsDispatch) {
  const EventRef event = makeEvent(7);
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event, kEventPriorityHigh), noErr);
    EXPECT_EQ(dispatched(), std::vector<UInt32>{7});
  }
  ReleaseEvent(event);
}

TEST_F(EventManagerQueue, TakesAnEventAgainFromItsOwnHandler) {
  int calls = 0;
  const Handler<1> poster([&](EventHandlerCallRef, EventRef event) {
    if (++calls < 3) {
      EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event, kEventPriorityLow), noErr);
    }
    return noErr;
  });
  post(makeEvent(), kEventPriorityHigh);
  dispatchAll();
  EXPECT_EQ(calls, 3);
  EXPECT_EQ(theEventManager().live(), 0U);
}

TEST_F(EventManagerQueue, RefusesOtherQueuesAndPriorities) {
  const EventRef event = makeEvent();
  EXPECT_EQ(PostEventToQueue(nullptr, event, kEventPriorityHigh), paramErr);
  EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event, -1), paramErr);
  EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event, 3), paramErr);
  EXPECT_EQ(theEventManager().queued(), 0U);
  ReleaseEvent(event);
  EXPECT_EQ(theEventManager().live(), 0U);
}

constexpr int kPosters = 8;
constexpr UInt32 kEventsEach = 300;  // of each priority
constexpr std::array kPriorities = {kEventPriorityLow, kEventPriorityStandard, kEventPriorityHigh};

void postAll(int thread) {
  for (UInt32 number = 1; number <= kEventsEach; ++number) {
    for (const EventPriority priority : kPriorities) {
      postNumber(thread, static_cast<UInt32>(priority) << 16 | number, priority);
    }
  }
}

std::vector<std::thread> startPosters() {
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kPosters; ++thread) threads.emplace_back(postAll, thread);
  return threads;
}

TEST_F(EventManagerQueue, KeepsTheOrderOfEachThreadWhileManyPost) {
  theLog().setSink({});
  std::map<std::pair<UInt32, UInt32>, UInt32> last;  // by thread and priority
  UInt32 arrived = 0;
  bool ordered = true;
  theEventManager().setApplication([&](EventRef event) {
    const UInt32 number = numberOf(event);
    UInt32& before = last[{GetEventKind(event), number >> 16}];
    ordered = ordered && (number & 0xFFFF) == before + 1;
    before = number & 0xFFFF;
    ++arrived;
  });
  std::vector<std::thread> threads = startPosters();
  while (arrived < kPosters * kEventsEach * kPriorities.size()) {
    dispatchAll();
    std::this_thread::yield();
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(ordered);
  EXPECT_EQ(last.size(), kPosters * kPriorities.size());
  EXPECT_EQ(theEventManager().live(), 0U);
}

TEST_F(EventManagerQueue, GivesOutHigherPrioritiesFirstAfterManyThreadsHavePosted) {
  theLog().setSink({});
  for (std::thread& thread : startPosters()) thread.join();
  std::vector<UInt32> priorities;
  theEventManager().setApplication(
      [&](EventRef event) { priorities.push_back(numberOf(event) >> 16); });
  dispatchAll();
  EXPECT_EQ(priorities.size(), kPosters * kEventsEach * kPriorities.size());
  EXPECT_TRUE(std::is_sorted(priorities.rbegin(), priorities.rend()));
}

class EventManagerHandlers : public testing::Test {
 protected:
  /// Returns an action that notes `name` and returns `status`.
  std::function<OSStatus(EventHandlerCallRef, EventRef)> note(char name, OSStatus status) {
    return [this, name, status](EventHandlerCallRef, EventRef) {
      calls += name;
      return status;
    };
  }

  Machine machine;
  std::string calls;
};

TEST_F(EventManagerHandlers, RunFromTheLastInstalledToTheFirst) {
  const Handler<1> first(note('1', eventNotHandledErr));
  const Handler<2> second(note('2', eventNotHandledErr));
  const Handler<3> third(note('3', eventNotHandledErr));
  const Dispatched dispatched = dispatchNew();
  EXPECT_EQ(calls, "321");
  EXPECT_EQ(dispatched.status, eventNotHandledErr);
  EXPECT_TRUE(dispatched.reachedHost);
}

TEST_F(EventManagerHandlers, RunOnlyForTheClassAndKindsThatTheyAreInstalledFor) {
  const Handler<1> handler(note('1', noErr), 5);
  EXPECT_TRUE(dispatchNew(4).reachedHost);
  EXPECT_FALSE(dispatchNew(5).reachedHost);
  const EventRef other = theEventManager().create(kEventClassMouse, 5, 0.0);
  EXPECT_TRUE(theEventManager().dispatch(other).reachedHost);
  ReleaseEvent(other);
  EXPECT_EQ(calls, "1");
}

/// Every status other than eventNotHandledErr ends the dispatch and is its result.
TEST_F(EventManagerHandlers, KeepAnEventWithAnyStatusButNotHandled) {
  for (const OSStatus status :
       {OSStatus{noErr}, OSStatus{paramErr}, OSStatus{-9868}, OSStatus{7}}) {
    calls.clear();
    const Handler<1> lower(note('1', noErr));
    const Handler<2> upper(note('2', status));
    const Dispatched dispatched = dispatchNew();
    EXPECT_EQ(calls, "2");
    EXPECT_EQ(dispatched.status, status);
    EXPECT_FALSE(dispatched.reachedHost);
  }
}

TEST_F(EventManagerHandlers, GetTheStatusOfTheHandlersBelowFromCallNextEventHandler) {
  const Handler<1> lower(note('1', -31415));
  OSStatus fromBelow = noErr;
  const Handler<2> upper([&](EventHandlerCallRef call, EventRef event) {
    calls += '2';
    fromBelow = CallNextEventHandler(call, event);
    calls += '3';
    return noErr;
  });
  EXPECT_EQ(dispatchNew().status, noErr);
  EXPECT_EQ(fromBelow, -31415);
  EXPECT_EQ(calls, "213");
}

TEST_F(EventManagerHandlers, BelowOneThatCalledThemDoNotRunAgain) {
  const Handler<1> lower(note('1', eventNotHandledErr));
  const Handler<2> upper(
      [](EventHandlerCallRef call, EventRef event) { return CallNextEventHandler(call, event); });
  const Dispatched dispatched = dispatchNew();
  EXPECT_EQ(calls, "1");
  EXPECT_EQ(dispatched.status, eventNotHandledErr);
  EXPECT_TRUE(dispatched.reachedHost);
}

TEST_F(EventManagerHandlers, MayDispatchAnotherEvent) {
  const Handler<1> lower(note('1', noErr), 2);
  const Handler<2> upper([&](EventHandlerCallRef call, EventRef event) {
    dispatchNew(2);
    return CallNextEventHandler(call, event);
  });
  EXPECT_EQ(dispatchNew(1).status, eventNotHandledErr);
  EXPECT_EQ(calls, "1");
}

TEST_F(EventManagerHandlers, MayRemoveThemselvesWhileTheyRun) {
  EventHandlerRef own = nullptr;
  const Handler<1> lower(note('1', noErr));
  const Handler<2> upper([&](EventHandlerCallRef call, EventRef event) {
    calls += '2';
    EXPECT_EQ(RemoveEventHandler(own), noErr);
    return CallNextEventHandler(call, event);
  });
  own = upper.ref;
  EXPECT_EQ(dispatchNew().status, noErr);
  EXPECT_EQ(dispatchNew().status, noErr);
  EXPECT_EQ(calls, "211");
}

TEST_F(EventManagerHandlers, AreSkippedOnceAHandlerAboveHasRemovedThem) {
  const Handler<1> lowest(note('1', noErr));
  const Handler<2> lower(note('2', noErr));
  const Handler<3> upper([&](EventHandlerCallRef, EventRef) {
    RemoveEventHandler(lower.ref);
    return eventNotHandledErr;
  });
  EXPECT_EQ(dispatchNew().status, noErr);
  EXPECT_EQ(calls, "1");
}

TEST_F(EventManagerHandlers, MissTheEventDuringWhichTheyAreInstalled) {
  std::optional<Handler<1>> late;
  const Handler<2> installer([&](EventHandlerCallRef, EventRef) {
    if (!late) late.emplace(note('1', noErr));
    return eventNotHandledErr;
  });
  EXPECT_TRUE(dispatchNew().reachedHost);
  EXPECT_FALSE(dispatchNew().reachedHost);
  EXPECT_EQ(calls, "1");
}

TEST_F(EventManagerHandlers, AreRefusedIfTheirFunctionIsInstalledForTheEvent) {
  const Handler<1> installed(note('1', noErr));
  machine.drain();
  const EventTypeSpec types[] = {{kTestClass, 2}, {kTestClass, 1}};
  int otherData = 0;
  EventHandlerRef ref = installed.ref;
  EXPECT_EQ(
      InstallEventHandler(GetEventDispatcherTarget(), callAction<1>, 2, types, &otherData, &ref),
      -9866);
  EXPECT_EQ(ref, nullptr);
  EXPECT_EQ(
      InstallEventHandler(GetEventDispatcherTarget(), callAction<1>, 2, types, &otherData, nullptr),
      -9866);
  EXPECT_TRUE(machine.drain().empty());
  EXPECT_EQ(theEventManager().installed(), 1U);
  EXPECT_TRUE(dispatchNew(2).reachedHost);  // nothing of a refused list is installed
  EXPECT_FALSE(dispatchNew(1).reachedHost);
  EXPECT_EQ(calls, "1");
}

TEST_F(EventManagerHandlers, AreTakenIfTheirFunctionIsInstalledForOtherEvents) {
  const Handler<1> one(note('1', noErr), 1);
  const Handler<1> two(note('2', noErr), 2);
  dispatchNew(1);
  dispatchNew(2);
  EXPECT_EQ(calls, "12");
}

TEST_F(EventManagerHandlers, AreTakenAgainOnceTheyWereRemoved) {
  {
    const Handler<1> gone(note('1', noErr));
  }
  const Handler<1> again(note('2', noErr));
  dispatchNew();
  EXPECT_EQ(calls, "2");
}

TEST_F(EventManagerHandlers, KeepTheirReferencesToThemselves) {
  EventHandlerRef old = nullptr;
  {
    const Handler<1> handler(note('1', noErr));
    old = handler.ref;
  }
  const Handler<1> other(note('2', noErr));
  EXPECT_NE(other.ref, old);
  EXPECT_EQ(RemoveEventHandler(old), -9868);
  EXPECT_EQ(theEventManager().installed(), 1U);
}

TEST_F(EventManagerHandlers, NeedATargetAndAFunction) {
  const EventTypeSpec type = {kTestClass, 1};
  EventHandlerRef ref = nullptr;
  EXPECT_EQ(InstallEventHandler(nullptr, callAction<1>, 1, &type, nullptr, &ref), paramErr);
  EXPECT_EQ(InstallEventHandler(GetEventDispatcherTarget(), nullptr, 1, &type, nullptr, &ref),
            paramErr);
  EXPECT_EQ(ref, nullptr);
  EXPECT_EQ(theEventManager().installed(), 0U);
}

TEST_F(EventManagerHandlers, MisuseACallThatIsOver) {
  machine.expectMisuses(testing::ElementsAreArray(std::vector<std::string>(
      2, "CallNextEventHandler: called outside of the handler that was given the call")));
  EventHandlerCallRef kept = nullptr;
  const Handler<1> handler([&](EventHandlerCallRef call, EventRef) {
    kept = call;
    return noErr;
  });
  const EventRef event = makeEvent();
  theEventManager().dispatch(event);
  EXPECT_EQ(CallNextEventHandler(kept, event), paramErr);
  EXPECT_EQ(CallNextEventHandler(nullptr, event), paramErr);
  ReleaseEvent(event);
}

}  // namespace
