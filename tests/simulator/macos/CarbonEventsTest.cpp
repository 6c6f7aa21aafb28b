// The event manager's C functions: events, their parameters, and the threads that may use them.
#include <Carbon/Carbon.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <thread>

#include "tests/simulator/macos/Handlers.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

constexpr EventParamName kName = fourCharCode("name");
constexpr EventParamType kLong = fourCharCode("long");
constexpr EventParamType kWildCard = fourCharCode("****");
constexpr OSStatus kCoercionFailed = -1700;

class CarbonEvents : public testing::Test {
 protected:
  ~CarbonEvents() override { ReleaseEvent(event); }

  template <class T>
  void set(EventParamType type, T value, EventParamName name = kName) {
    EXPECT_EQ(SetEventParameter(event, name, type, sizeof value, &value), noErr);
  }

  /// Reads the parameter as `wanted`. Its bytes and reported size must be those of a `T`.
  template <class T>
  T get(EventParamType wanted, EventParamType actual) {
    T value{};
    EventParamType type = 0;
    ByteCount size = 0;
    EXPECT_EQ(GetEventParameter(event, kName, wanted, &type, sizeof value, &size, &value), noErr);
    EXPECT_EQ(type, actual);
    EXPECT_EQ(size, sizeof value);
    return value;
  }

  OSStatus statusOfReading(EventParamType wanted) {
    std::int64_t value = 0;
    const OSStatus status =
        GetEventParameter(event, kName, wanted, nullptr, sizeof value, nullptr, &value);
    if (status != noErr) {
      EXPECT_EQ(value, 0) << "a failed call wrote to the buffer";
    }
    return status;
  }

  Machine machine;
  EventRef event = makeEvent();
};

TEST_F(CarbonEvents, HaveTheirClassAndKind) {
  EXPECT_EQ(GetEventClass(event), kTestClass);
  EXPECT_EQ(GetEventKind(event), 1U);
}

TEST_F(CarbonEvents, AreNotCreatedIfMemoryIsShort) {
  theEventManager().failCreations(1);
  EventRef unchanged = event;
  EXPECT_EQ(CreateEvent(nullptr, kTestClass, 1, 0.0, kEventAttributeUserEvent, &unchanged),
            memFullErr);
  EXPECT_EQ(unchanged, event);
  EXPECT_EQ(theEventManager().live(), 1U);
}

TEST_F(CarbonEvents, KeepTheirParametersInTheOrderInWhichTheyWereFirstSet) {
  set<std::int16_t>(typeSInt16, 1, fourCharCode("zzzz"));
  set<std::int16_t>(typeSInt16, 2, fourCharCode("aaaa"));
  set<std::int16_t>(typeSInt16, 3, fourCharCode("mmmm"));
  set<std::uint32_t>(typeUInt32, 4, fourCharCode("zzzz"));
  PostEventToQueue(GetMainEventQueue(), event, kEventPriorityHigh);
  Json expected = Json::array();
  expected.push_back({"zzzz", "magn", 4});
  expected.push_back({"aaaa", "shor", 2});
  expected.push_back({"mmmm", "shor", 3});
  EXPECT_EQ(machine.lines("posted").at(0)["parameters"], expected);
  theEventManager().dispatchNext();
}

TEST_F(CarbonEvents, KeepACopyOfTheParametersBytes) {
  std::array<char, 100> text;
  text.fill('a');
  EXPECT_EQ(SetEventParameter(event, kName, typeChar, text.size(), text.data()), noErr);
  text.fill('b');
  EXPECT_EQ(get<decltype(text)>(typeChar, typeChar)[99], 'a');
}

TEST_F(CarbonEvents, GiveAParameterOfTheWantedType) {
  set<std::int16_t>(typeSInt16, -5);
  EXPECT_EQ(get<std::int16_t>(typeSInt16, typeSInt16), -5);
}

TEST_F(CarbonEvents, GiveAParameterOfAnyTypeForTheWildCard) {
  set(typeHIPoint, CGPoint{1.5, -2.5});
  const auto point = get<CGPoint>(kWildCard, typeHIPoint);
  EXPECT_EQ(point.x, 1.5);
  EXPECT_EQ(point.y, -2.5);
}

TEST_F(CarbonEvents, ConvertIntegersThatFit) {
  set<std::int16_t>(typeSInt16, -5);
  EXPECT_EQ(get<std::int32_t>(kLong, kLong), -5);
  EXPECT_EQ(get<std::int64_t>(typeSInt64, typeSInt64), -5);
  set<std::int64_t>(typeSInt64, 0xFFFFFFFF);
  EXPECT_EQ(get<std::uint32_t>(typeUInt32, typeUInt32), 0xFFFFFFFFU);
  set<std::int32_t>(kLong, -32768);
  EXPECT_EQ(get<std::int16_t>(typeSInt16, typeSInt16), -32768);
  set<std::uint32_t>(typeUInt32, 32767);
  EXPECT_EQ(get<std::int16_t>(typeSInt16, typeSInt16), 32767);
}

TEST_F(CarbonEvents, RefuseToConvertIntegersThatDoNotFit) {
  set<std::int16_t>(typeSInt16, -1);
  EXPECT_EQ(statusOfReading(typeUInt32), kCoercionFailed);
  set<std::uint32_t>(typeUInt32, 0x80000000);
  EXPECT_EQ(statusOfReading(kLong), kCoercionFailed);
  EXPECT_EQ(statusOfReading(typeSInt64), noErr);
  set<std::int32_t>(kLong, 32768);
  EXPECT_EQ(statusOfReading(typeSInt16), kCoercionFailed);
  set<std::int64_t>(typeSInt64, std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(statusOfReading(kLong), kCoercionFailed);
}

TEST_F(CarbonEvents, RefuseToConvertOtherTypes) {
  set<std::int16_t>(typeSInt16, 1);
  EXPECT_EQ(statusOfReading(typeChar), kCoercionFailed);
  EXPECT_EQ(statusOfReading(typeHIPoint), kCoercionFailed);
  set<char>(typeChar, 1);
  EXPECT_EQ(statusOfReading(typeSInt16), kCoercionFailed);
}

/// A 'shor' of four bytes is not an integer of 16 bits.
TEST_F(CarbonEvents, RefuseToConvertAnIntegerOfAnotherSize) {
  set<std::int32_t>(typeSInt16, 1);
  EXPECT_EQ(statusOfReading(typeSInt64), kCoercionFailed);
  EXPECT_EQ(statusOfReading(typeSInt16), noErr);
}

TEST_F(CarbonEvents, CopyNoMoreThanTheBufferHoldsAndReportTheWholeSize) {
  EXPECT_EQ(SetEventParameter(event, kName, typeChar, 4, "abcd"), noErr);
  char buffer[6] = {'.', '.', '.', '.', '.', '.'};
  ByteCount size = 0;
  EXPECT_EQ(GetEventParameter(event, kName, typeChar, nullptr, 2, &size, buffer), noErr);
  EXPECT_EQ(std::string(buffer, sizeof buffer), "ab....");
  EXPECT_EQ(size, 4U);
  EXPECT_EQ(GetEventParameter(event, kName, typeChar, nullptr, 6, &size, buffer), noErr);
  EXPECT_EQ(std::string(buffer, sizeof buffer), "abcd..");
  EXPECT_EQ(size, 4U);
}

TEST_F(CarbonEvents, ReportTypeAndSizeWithoutABuffer) {
  set<std::int16_t>(typeSInt16, 1);
  EventParamType type = 0;
  ByteCount size = 0;
  EXPECT_EQ(GetEventParameter(event, kName, kWildCard, &type, 0, &size, nullptr), noErr);
  EXPECT_EQ(type, typeSInt16);
  EXPECT_EQ(size, 2U);
}

TEST_F(CarbonEvents, AreMisusedByASizeWithoutABuffer) {
  machine.expectMisuse("GetEventParameter: a size of 2 without a buffer");
  set<std::int16_t>(typeSInt16, 1);
  EXPECT_EQ(GetEventParameter(event, kName, typeSInt16, nullptr, 2, nullptr, nullptr), paramErr);
}

TEST_F(CarbonEvents, LeaveTheAnswersAloneIfTheyHaveNoSuchParameter) {
  set<std::int16_t>(typeSInt16, 1);
  std::int16_t value = 99;
  EventParamType type = 98;
  ByteCount size = 97;
  EXPECT_EQ(GetEventParameter(event, fourCharCode("none"), typeSInt16, &type, sizeof value, &size,
                              &value),
            eventParameterNotFoundErr);
  EXPECT_EQ(value, 99);
  EXPECT_EQ(type, 98U);
  EXPECT_EQ(size, 97U);
}

TEST_F(CarbonEvents, AreMisusedAfterTheirRelease) {
  const auto by = [](const std::string& call) {
    return testing::MatchesRegex(call + ": 0x[0-9a-f]+ is no event, or was released");
  };
  machine.expectMisuses(
      testing::ElementsAre(by("SetEventParameter"), by("GetEventParameter"), by("PostEventToQueue"),
                           by("GetEventClass"), by("GetEventKind"), by("ReleaseEvent"),
                           "SetEventParameter: 0x0 is no event, or was released"));
  const EventRef gone = makeEvent();
  ReleaseEvent(gone);
  std::int16_t value = 5;
  EXPECT_EQ(SetEventParameter(gone, kName, typeSInt16, sizeof value, &value), paramErr);
  EXPECT_EQ(GetEventParameter(gone, kName, typeSInt16, nullptr, sizeof value, nullptr, &value),
            paramErr);
  EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), gone, kEventPriorityHigh), paramErr);
  EXPECT_EQ(GetEventClass(gone), 0U);
  EXPECT_EQ(GetEventKind(gone), 0U);
  ReleaseEvent(gone);
  EXPECT_EQ(SetEventParameter(nullptr, kName, typeSInt16, sizeof value, &value), paramErr);
}

/// The calls of the device thread.
TEST_F(CarbonEvents, AreMadeFilledPostedAndReleasedOnAnyThread) {
  std::thread([] {
    const EventRef made = makeEvent();
    const UInt32 modifiers = GetCurrentKeyModifiers();
    SetEventParameter(made, kName, typeUInt32, sizeof modifiers, &modifiers);
    EXPECT_EQ(GetEventClass(made), kTestClass);
    EXPECT_EQ(GetEventKind(made), 1U);
    EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), made, kEventPriorityHigh), noErr);
    ReleaseEvent(made);
  }).join();
  EXPECT_EQ(theLog().misuses(), 0);
  EXPECT_TRUE(theEventManager().dispatchNext());
  EXPECT_EQ(theEventManager().live(), 1U);
}

TEST_F(CarbonEvents, ReachAHandlerOnTheMainThreadWhicheverThreadInstalledIt) {
  std::thread::id ranOn;
  std::optional<Handler<1>> handler;
  std::thread([&] {
    handler.emplace([&](EventHandlerCallRef, EventRef) {
      ranOn = std::this_thread::get_id();
      return noErr;
    });
  }).join();
  EXPECT_EQ(theLog().misuses(), 0);
  EXPECT_EQ(dispatchNew().status, noErr);
  EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST_F(CarbonEvents, AreMisusedByAThreadThatFillsThemAfterItHasPostedThem) {
  machine.expectMisuse(
      "SetEventParameter: called on another thread than the main one for an event that was "
      "posted");
  std::thread([] {
    const EventRef made = makeEvent();
    PostEventToQueue(GetMainEventQueue(), made, kEventPriorityHigh);
    const std::int16_t value = 1;
    SetEventParameter(made, kName, typeSInt16, sizeof value, &value);
    ReleaseEvent(made);
  }).join();
  EXPECT_TRUE(theEventManager().dispatchNext());
}

TEST_F(CarbonEvents, AreReadOnTheMainThreadAlone) {
  machine.expectMisuse("GetEventParameter: called on another thread than the main one");
  set<std::int16_t>(typeSInt16, 1);
  std::thread([&] { statusOfReading(typeSInt16); }).join();
}

TEST_F(CarbonEvents, ArePassedOnByTheMainThreadAlone) {
  machine.expectMisuse("CallNextEventHandler: called on another thread than the main one");
  const Handler<1> handler([](EventHandlerCallRef call, EventRef passed) {
    OSStatus status = noErr;
    std::thread([&] { status = CallNextEventHandler(call, passed); }).join();
    return status;
  });
  EXPECT_TRUE(dispatchNew().reachedHost);
}

TEST_F(CarbonEvents, LoseTheirHandlersOnTheMainThreadAlone) {
  machine.expectMisuse("RemoveEventHandler: called on another thread than the main one");
  const EventTypeSpec type = {kTestClass, 1};
  EventHandlerRef ref = nullptr;
  InstallEventHandler(GetEventDispatcherTarget(), callAction<1>, 1, &type, nullptr, &ref);
  std::thread([&] { RemoveEventHandler(ref); }).join();
}

}  // namespace
