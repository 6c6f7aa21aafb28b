// The receiver of device events, observed through its effects on the simulated machine.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "navigate/DeviceEvent.h"
#include "suites/Suites.h"
#include "tests/support/Input.h"
#include "tests/support/LowerHandler.h"

namespace {

using namespace simulator;
using namespace testing_support;

struct Sample {
  int x = 0, y = 0, z = 0, rx = 0, ry = 0, rz = 0;
};

class DeviceDispatch : public NavigatorFixture {
 protected:
  static void setShort(EventRef event, EventParamName name, int value) {
    const auto number = static_cast<std::int16_t>(value);
    SetEventParameter(event, name, typeSInt16, sizeof number, &number);
  }

  static EventRef makeEvent(UInt32 kind) {
    return theEventManager().create(kDeviceEventClass, kind, 0.0);
  }

  static EventRef axesEvent(const Sample& s) {
    const EventRef event = makeEvent(kDeviceAxes);
    setShort(event, kTranslationX, s.x);
    setShort(event, kTranslationY, s.y);
    setShort(event, kTranslationZ, s.z);
    setShort(event, kRotationX, s.rx);
    setShort(event, kRotationY, s.ry);
    setShort(event, kRotationZ, s.rz);
    return event;
  }

  /// Calls the handler as the dispatcher does, expects it to consume the event, and dispatches what
  /// it posts.
  void dispatch(EventRef event) {
    EXPECT_EQ(deviceHandler(nullptr, event, navigator), noErr);
    theEventManager().release(event);
    while (theEventManager().dispatchNext()) {
    }
    EXPECT_EQ(theEventManager().live(), 0U);
  }

  /// The kinds of the lines that the event causes if no redraw is awaited.
  std::vector<std::string> linesOf(EventRef event) {
    navigator->m_refreshWait = 0;
    machine.drain();
    dispatch(event);
    std::vector<std::string> kinds;
    for (const Json& line : machine.drain()) kinds.push_back(line["what"]);
    return kinds;
  }

  /// The wheels of the one tick that a sample posts.
  Json tickOf(const Sample& sample) {
    navigator->m_refreshWait = 0;
    input();
    dispatch(axesEvent(sample));
    const std::vector<Json> ticks = wheels();
    return ticks.size() == 1 ? ticks.front()["wheels"] : Json("no tick");
  }
};

TEST_F(DeviceDispatch, ZoomsByThePush) {
  EXPECT_EQ(tickOf({.z = 11}), Json({1}));
  EXPECT_EQ(tickOf({.z = -11}), Json({-1}));
}

TEST_F(DeviceDispatch, PansAgainstTheMotion) {
  EXPECT_EQ(tickOf({.x = 100}), Json({0, 8}));
  EXPECT_EQ(tickOf({.x = -100}), Json({0, -8}));
  EXPECT_EQ(tickOf({.y = 100}), Json({8}));
  EXPECT_EQ(tickOf({.y = -100}), Json({-8}));
}

/// The steps of +-32767 counts wrap at 16 bits, which reverses their signs.
TEST_F(DeviceDispatch, LeavesTheSmallestTranslationUnchangedWhenNegating) {
  EXPECT_EQ(tickOf({.x = -32767}), Json({0, 8}));
  EXPECT_EQ(tickOf({.x = -32768}), Json({0, -8}));
  EXPECT_EQ(tickOf({.y = -32767}), Json({8}));
  EXPECT_EQ(tickOf({.y = -32768}), Json({-8}));
}

TEST_F(DeviceDispatch, ChangesTheBrushAtATwist) {
  EXPECT_EQ(linesOf(axesEvent({.rz = 600})),
            (std::vector<std::string>{"get", "get", "posted", "posted"}));
}

TEST_F(DeviceDispatch, EndsABrushGestureAtEveryOtherSample) {
  const auto asksForTheTool = [&](const Sample& sample) {
    dispatch(axesEvent(sample));
    return !machine.drain().empty();
  };
  machine.drain();
  EXPECT_TRUE(asksForTheTool({.rz = 30}));
  EXPECT_FALSE(asksForTheTool({.rz = 30}));
  for (const Sample& other : {Sample{}, Sample{.z = 1}, Sample{.z = 5, .rz = 5}}) {
    dispatch(axesEvent(other));
    machine.drain();
    EXPECT_TRUE(asksForTheTool({.rz = 30}));
    EXPECT_FALSE(asksForTheTool({.rz = 30}));
  }
}

TEST_F(DeviceDispatch, HoldsClicksBackFromTheFirstPanToTheFirstRest) {
  dispatch(axesEvent({.x = 1}));
  EXPECT_NE(navigator->m_mouseDownHandlerRef, nullptr);
  dispatch(axesEvent({.z = 1}));
  EXPECT_NE(navigator->m_mouseDownHandlerRef, nullptr);
  dispatch(axesEvent({}));
  EXPECT_EQ(navigator->m_mouseDownHandlerRef, nullptr);
}

TEST_F(DeviceDispatch, CreatesAMouseMovedEventAtATwistWithoutPostingIt) {
  std::vector<EventContent> gone;
  theEventManager().setObserver([&](const EventContent& event) { gone.push_back(event); });
  dispatch(axesEvent({.rz = 5}));
  theEventManager().setObserver({});
  ASSERT_EQ(gone.size(), 2U);  // the other event is the sample itself
  const EventContent& idle = gone.front();
  EXPECT_EQ(idle.eventClass, fourCharCode("mous"));
  EXPECT_EQ(idle.kind, 5U);
  ASSERT_EQ(idle.parameters.size(), 2U);
  EXPECT_EQ(idle.parameters[0].name, fourCharCode("kmod"));
  EXPECT_EQ(idle.parameters[0].type, fourCharCode("magn"));
  EXPECT_EQ(idle.parameters[0].bytes.view().size(), 4U);
  EXPECT_EQ(idle.parameters[1].name, fourCharCode("mdta"));
  EXPECT_EQ(idle.parameters[1].type, fourCharCode("hipt"));
  EXPECT_EQ(idle.parameters[1].bytes.view().size(), 4U);  // of the point's 16 bytes
  for (const EventParameter& parameter : idle.parameters) {
    for (const std::byte byte : parameter.bytes.view()) EXPECT_EQ(byte, std::byte{0});
  }
  EXPECT_TRUE(machine.lines("posted").empty());
  EXPECT_EQ(theEventManager().queued(), 0U);
}

TEST_F(DeviceDispatch, CreatesNoEventAtAnyOtherSample) {
  std::vector<EventContent> gone;
  theEventManager().setObserver([&](const EventContent& event) { gone.push_back(event); });
  for (const Sample& sample : {Sample{}, Sample{.x = 5}, Sample{.z = 5}})
    dispatch(axesEvent(sample));
  theEventManager().setObserver({});
  for (const EventContent& event : gone) EXPECT_EQ(event.eventClass, OSType{kDeviceEventClass});
  EXPECT_EQ(gone.size(), 3U);
}

/// To set a parameter of a null event, or to release it, would be a misuse.
TEST_F(DeviceDispatch, LeavesAMouseEventThatCannotBeCreatedAlone) {
  const EventRef event = axesEvent({.rz = 5});
  theEventManager().failCreations(1);
  dispatch(event);
  EXPECT_EQ(theLog().misuses(), 0);
  EXPECT_TRUE(machine.lines("posted").empty());
}

TEST_F(DeviceDispatch, ConsumesButtonsAndCommandsWithoutEffect) {
  for (const UInt32 kind : {kDeviceButton, kDeviceCommand}) {
    const EventRef event = makeEvent(kind);
    setShort(event, kButtonNumber, 3);
    setShort(event, kButtonState, 1);
    setShort(event, kCommandNumber, 4);
    setShort(event, kTranslationZ, 100);
    EXPECT_EQ(linesOf(event), std::vector<std::string>{});
  }
}

TEST_F(DeviceDispatch, ConsumesOtherKindsWithoutEffect) {
  for (const UInt32 kind : {0U, 3U, 4U, 6U, 0xFFFFFFFFU}) {
    EXPECT_EQ(linesOf(makeEvent(kind)), std::vector<std::string>{});
  }
}

TEST_F(DeviceDispatch, TakesMissingParametersAsZero) {
  const EventRef event = makeEvent(kDeviceAxes);
  setShort(event, kTranslationZ, 11);
  dispatch(event);
  EXPECT_EQ(wheels().size(), 1U);
  EXPECT_EQ(linesOf(makeEvent(kDeviceAxes)), std::vector<std::string>{});
}

TEST_F(DeviceDispatch, SwallowsExceptionsOfActions) {
  PIUSuitesRelease();
  theFaults().add({"Basic.AcquireSuite", -1, 0, 1});
  dispatch(axesEvent({.rz = 30}));
  EXPECT_EQ(theFaults().fired(), 1U);
}

/// The handler below is installed first.
TEST(DeviceDispatchBelow, KeepsEveryDeviceEventFromTheHandlersBelow) {
  Machine machine;
  writeHostFiles({}, machine.preferences());
  LowerHandler lower({{kDeviceEventClass, kDeviceButton},
                      {kDeviceEventClass, kDeviceAxes},
                      {kDeviceEventClass, kDeviceCommand}});
  const Navigate2D& navigator = Navigate2D::Instance();
  for (const UInt32 kind : {kDeviceButton, kDeviceAxes, kDeviceCommand}) {
    EXPECT_FALSE(lower.receives(kDeviceEventClass, kind));
  }
  RemoveEventHandler(navigator.m_deviceHandlerRef);
  for (const UInt32 kind : {kDeviceButton, kDeviceAxes, kDeviceCommand}) {
    EXPECT_TRUE(lower.receives(kDeviceEventClass, kind));
  }
}

}  // namespace
