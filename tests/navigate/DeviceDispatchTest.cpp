// What a sample is routed to. The actions themselves are replaced here by ones that write down how
// they were called.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "device/DeviceEvent.h"
#include "hostactions/BrushSize.h"
#include "navigate/Navigate2D.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

std::vector<std::string> calls;
const Navigate2D* called = nullptr;
bool actionsThrow = false;

struct ParameterSet {
  EventParamName name;
  EventParamType type;
  ByteCount size;
  std::vector<std::byte> bytes;
};
std::vector<ParameterSet> parametersSet;
bool recordParameters = false;

void record(std::string call) {
  calls.push_back(std::move(call));
  if (actionsThrow) throw std::runtime_error("an action failed");
}

}  // namespace

void Navigate2D::ZoomEvent(short z) {
  called = this;
  record("zoom " + std::to_string(z));
}

void Navigate2D::PanEvent(short dx, short dy) {
  called = this;
  record("pan " + std::to_string(dx) + " " + std::to_string(dy));
}

void AdjustBrushSize(int delta) { record("brush " + std::to_string(delta)); }

void ResetBrushSizeAccumulator() { calls.emplace_back("reset"); }

// Takes the place of the simulated Mac's for this program.
OSStatus SetEventParameter(EventRef event, EventParamName name, EventParamType type, ByteCount size,
                           const void* data) {
  const auto* bytes = static_cast<const std::byte*>(data);
  if (recordParameters) parametersSet.push_back({name, type, size, {bytes, bytes + size}});
  return theEventManager().setParameter(event, name, type, {bytes, size});
}

namespace {

struct Sample {
  int x = 0, y = 0, z = 0, rx = 0, ry = 0, rz = 0;
};

class DeviceDispatchTest : public testing::Test {
 protected:
  DeviceDispatchTest() {
    calls.clear();
    parametersSet.clear();
    recordParameters = actionsThrow = false;
    called = nullptr;
  }

  static void setShort(EventRef event, EventParamName name, int value) {
    const auto number = static_cast<std::int16_t>(value);
    SetEventParameter(event, name, typeSInt16, sizeof number, &number);
  }

  static EventRef axesEvent(const Sample& s) {
    const EventRef event = theEventManager().create(kDeviceEventClass, kDeviceAxes, 0.0);
    setShort(event, kTranslationX, s.x);
    setShort(event, kTranslationY, s.y);
    setShort(event, kTranslationZ, s.z);
    setShort(event, kRotationX, s.rx);
    setShort(event, kRotationY, s.ry);
    setShort(event, kRotationZ, s.rz);
    return event;
  }

  /// The calls that one event comes to; it is always consumed.
  std::vector<std::string> dispatch(EventRef event) {
    calls.clear();
    EXPECT_EQ(deviceHandler(nullptr, event, navigator), noErr);
    theEventManager().release(event);
    EXPECT_EQ(theEventManager().live(), 0U);
    return calls;
  }

  std::vector<std::string> dispatch(const Sample& sample) { return dispatch(axesEvent(sample)); }

  Machine machine;
  alignas(Navigate2D) std::byte storage[sizeof(Navigate2D)] = {};
  Navigate2D* navigator = reinterpret_cast<Navigate2D*>(storage);
};

using Calls = std::vector<std::string>;

TEST_F(DeviceDispatchTest, AThreefoldTiePansAfterTheBrushIsReset) {
  EXPECT_EQ(dispatch(Sample{.x = 3, .y = -4, .z = 4, .rz = 4}), (Calls{"reset", "pan -3 4"}));
}

TEST_F(DeviceDispatchTest, APushAloneZooms) {
  EXPECT_EQ(dispatch(Sample{.z = 10}), (Calls{"reset", "zoom 10"}));
  EXPECT_EQ(called, navigator);
}

TEST_F(DeviceDispatchTest, ADominantTwistGoesToTheBrushAlone) {
  EXPECT_EQ(dispatch(Sample{.x = 4, .y = -4, .z = 4, .rz = -5}), (Calls{"brush -5"}));
}

TEST_F(DeviceDispatchTest, RestPansByZero) {
  EXPECT_EQ(dispatch(Sample{}), (Calls{"reset", "pan 0 0"}));
  EXPECT_EQ(called, navigator);
}

TEST_F(DeviceDispatchTest, TheSmallestTranslationStaysItselfWhenNegated) {
  EXPECT_EQ(dispatch(Sample{.x = -32768}), (Calls{"reset", "pan -32768 0"}));
  EXPECT_EQ(dispatch(Sample{.y = -32768}), (Calls{"reset", "pan 0 -32768"}));
  EXPECT_EQ(dispatch(Sample{.x = 32767, .y = -32767}), (Calls{"reset", "pan -32767 32767"}));
}

TEST_F(DeviceDispatchTest, TheSmallestValueDominatesTheLargest) {
  EXPECT_EQ(dispatch(Sample{.x = 32767, .y = 32767, .z = 32767, .rz = -32768}),
            (Calls{"brush -32768"}));
  EXPECT_EQ(dispatch(Sample{.x = 32767, .y = 32767, .z = -32768, .rz = 32767}),
            (Calls{"reset", "zoom -32768"}));
}

TEST_F(DeviceDispatchTest, ATwistThatOnlyEqualsAnotherDoesNotTouchTheBrush) {
  EXPECT_EQ(dispatch(Sample{.z = 5, .rz = 5}), (Calls{"reset", "pan 0 0"}));
  EXPECT_EQ(dispatch(Sample{.x = -5, .rz = 5}), (Calls{"reset", "pan 5 0"}));
  EXPECT_EQ(dispatch(Sample{.y = 5, .rz = -5}), (Calls{"reset", "pan 0 -5"}));
}

TEST_F(DeviceDispatchTest, APushThatOnlyEqualsAnotherPans) {
  EXPECT_EQ(dispatch(Sample{.z = -5, .rz = 5}), (Calls{"reset", "pan 0 0"}));
  EXPECT_EQ(dispatch(Sample{.x = 5, .z = -5}), (Calls{"reset", "pan -5 0"}));
  EXPECT_EQ(dispatch(Sample{.y = -5, .z = -5}), (Calls{"reset", "pan 0 5"}));
}

TEST_F(DeviceDispatchTest, TheOtherTwoRotationsInfluenceNothing) {
  EXPECT_EQ(dispatch(Sample{.z = 1, .rx = 32767, .ry = -32768}), (Calls{"reset", "zoom 1"}));
  EXPECT_EQ(dispatch(Sample{.rx = 32767, .ry = -32768}), (Calls{"reset", "pan 0 0"}));
}

/// Against a second implementation that compares magnitudes; values are drawn so that ties abound.
TEST_F(DeviceDispatchTest, RandomSamplesGoWhereMagnitudesSay) {
  theLog().setSink({});
  constexpr std::array<int, 12> kValues = {0,  1,    -1,    2,      -2,     181,
                                           46, -181, 32767, -32767, -32768, 7};
  std::mt19937 random(7);
  const auto draw = [&] { return kValues[random() % kValues.size()]; };
  for (int i = 0; i < 100'000; ++i) {
    const Sample s = {draw(), draw(), draw(), draw(), draw(), draw()};
    const int push = std::abs(s.z);
    const int twist = std::abs(s.rz);
    const int shift = std::max(std::abs(s.x), std::abs(s.y));
    const auto negated = [](int v) { return std::to_string(v == -32768 ? v : -v); };
    Calls expected;
    if (twist > std::max(push, shift)) {
      expected = {"brush " + std::to_string(s.rz)};
    } else if (push > std::max(twist, shift)) {
      expected = {"reset", "zoom " + std::to_string(s.z)};
    } else {
      expected = {"reset", "pan " + negated(s.x) + " " + negated(s.y)};
    }
    ASSERT_EQ(dispatch(s), expected) << s.x << ' ' << s.y << ' ' << s.z << ' ' << s.rz;
  }
}

TEST_F(DeviceDispatchTest, ATwistMakesAMouseMovedEventAndDropsItUnposted) {
  const EventRef event = axesEvent({.rz = 5});
  recordParameters = true;
  dispatch(event);
  ASSERT_EQ(parametersSet.size(), 2U);
  EXPECT_EQ(parametersSet[0].name, fourCharCode("kmod"));
  EXPECT_EQ(parametersSet[0].type, fourCharCode("magn"));
  EXPECT_EQ(parametersSet[0].bytes, std::vector<std::byte>(4));
  EXPECT_EQ(parametersSet[1].name, fourCharCode("mdta"));
  EXPECT_EQ(parametersSet[1].type, fourCharCode("hipt"));
  EXPECT_EQ(parametersSet[1].size, 4U);  // of the point's 16 bytes, deliberately
  EXPECT_EQ(parametersSet[1].bytes, std::vector<std::byte>(4));
  EXPECT_TRUE(machine.lines("posted").empty());
  EXPECT_EQ(theEventManager().queued(), 0U);
}

TEST_F(DeviceDispatchTest, NoOtherSampleMakesAnEvent) {
  for (const Sample& sample : {Sample{}, Sample{.x = 5}, Sample{.z = 5}}) {
    const EventRef event = axesEvent(sample);
    recordParameters = true;
    dispatch(event);
    recordParameters = false;
  }
  EXPECT_TRUE(parametersSet.empty());
}

TEST_F(DeviceDispatchTest, AMouseEventThatCannotBeMadeIsNotMissed) {
  machine.expectMisuses(2);  // its two parameters, which nobody checks
  const EventRef event = axesEvent({.rz = 5});
  theEventManager().failCreations(1);
  EXPECT_EQ(dispatch(event), (Calls{"brush 5"}));
}

TEST_F(DeviceDispatchTest, ButtonsAndCommandsAreConsumedWithNoEffect) {
  for (const UInt32 kind : {kDeviceButton, kDeviceCommand}) {
    const EventRef event = theEventManager().create(kDeviceEventClass, kind, 0.0);
    setShort(event, kButtonNumber, 3);
    setShort(event, kButtonState, 1);
    setShort(event, kCommandNumber, 4);
    setShort(event, kTranslationZ, 100);
    EXPECT_EQ(dispatch(event), Calls{});
  }
}

TEST_F(DeviceDispatchTest, OtherKindsAreConsumedWithNoEffect) {
  for (const UInt32 kind : {0U, 3U, 4U, 6U, 0xFFFFFFFFU}) {
    EXPECT_EQ(dispatch(theEventManager().create(kDeviceEventClass, kind, 0.0)), Calls{});
  }
}

TEST_F(DeviceDispatchTest, MissingParametersCountAsZero) {
  const EventRef event = theEventManager().create(kDeviceEventClass, kDeviceAxes, 0.0);
  setShort(event, kTranslationZ, 6);
  EXPECT_EQ(dispatch(event), (Calls{"reset", "zoom 6"}));
  EXPECT_EQ(dispatch(theEventManager().create(kDeviceEventClass, kDeviceAxes, 0.0)),
            (Calls{"reset", "pan 0 0"}));
}

TEST_F(DeviceDispatchTest, WhatAnActionThrowsIsSwallowed) {
  actionsThrow = true;
  EXPECT_EQ(dispatch(Sample{.rz = 5}), (Calls{"brush 5"}));
  EXPECT_EQ(dispatch(Sample{.z = 5}), (Calls{"reset", "zoom 5"}));
  EXPECT_EQ(dispatch(Sample{.x = 5}), (Calls{"reset", "pan -5 0"}));
}

}  // namespace
