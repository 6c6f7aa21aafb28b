#include "simulator/base/Faults.h"
#include "tests/support/Input.h"

namespace {

using namespace testing_support;

constexpr UInt32 kCommand = 0x0100;
constexpr UInt32 kOption = 0x0800;
constexpr Point kPlace = {.v = 350, .h = 500};

class WheelTick : public NavigatorFixture {
 protected:
  Lines tick(UInt16 axis, SInt32 delta, UInt32 modifiers, Point where = kPlace) {
    EXPECT_EQ(navigator->SimulateWheelMovedEvent(nullptr, axis, delta, where, modifiers), 0);
    EXPECT_EQ(simulator::theCFObjects().live(), 0U);
    return input();
  }
};

TEST_F(WheelTick, PostsOnlyTheWheelWithoutModifiers) {
  EXPECT_EQ(tick(1, 3, 0), (Lines{wheelLine({3}, 0, 500, 550)}));
}

TEST_F(WheelTick, HoldsOptionDuringTheWheelEvent) {
  EXPECT_EQ(tick(1, 3, kOption),
            (Lines{keyLine(58, true), wheelLine({3}, 0x80000, 500, 550), keyLine(58, false)}));
}

TEST_F(WheelTick, HoldsCommandDuringTheWheelEvent) {
  EXPECT_EQ(tick(1, 3, kCommand),
            (Lines{keyLine(55, true), wheelLine({3}, 0x100000, 500, 550), keyLine(55, false)}));
}

TEST_F(WheelTick, ReleasesBothKeysInTheReverseOrderOfPressing) {
  EXPECT_EQ(tick(1, 3, kOption | kCommand),
            (Lines{keyLine(58, true), keyLine(55, true), wheelLine({3}, 0x180000, 500, 550),
                   keyLine(55, false), keyLine(58, false)}));
}

TEST_F(WheelTick, IgnoresOtherModifierBits) {
  EXPECT_EQ(tick(1, 3, ~(kOption | kCommand)), (Lines{wheelLine({3}, 0, 500, 550)}));
}

TEST_F(WheelTick, TurnsTheFirstWheelForAxisOneAndTheSecondForAnyOther) {
  EXPECT_EQ(tick(1, -7, 0), (Lines{wheelLine({-7}, 0, 500, 550)}));
  for (const int axis : {0, 2, 3, 0xFFFF}) {
    EXPECT_EQ(tick(static_cast<UInt16>(axis), -7, 0), (Lines{wheelLine({0, -7}, 0, 500, 550)}))
        << axis;
  }
}

TEST_F(WheelTick, PassesAllThirtyTwoBitsOfTheDelta) {
  EXPECT_EQ(tick(1, 2147483647, 0), (Lines{wheelLine({2147483647}, 0, 500, 550)}));
  EXPECT_EQ(tick(0, -2147483647 - 1, 0), (Lines{wheelLine({0, -2147483647 - 1}, 0, 500, 550)}));
}

TEST_F(WheelTick, MeasuresTheLocationFromTheTopOfTheWindowsScreen) {
  server.screen.size.height = 1080;
  EXPECT_EQ(tick(1, 1, 0), (Lines{wheelLine({1}, 0, 500, 730)}));
  server.windowHasScreen = false;
  EXPECT_EQ(tick(1, 1, 0), (Lines{wheelLine({1}, 0, 500, -350)}));
  EXPECT_EQ(tick(1, 1, 0, {.v = -20, .h = -30}), (Lines{wheelLine({1}, 0, -30, 20)}));
}

TEST_F(WheelTick, ReachesAReceiverOfTheInputStream) {
  std::vector<unsigned> types;
  server.setApplication(
      [&](const simulator::SynthesizedEvent& event) { types.push_back(event.type); });
  tick(1, 1, kOption);
  server.deliverInput();
  EXPECT_EQ(types, (std::vector<unsigned>{10, 22, 11}));
}

TEST_F(WheelTick, DoesNothingInTheTwoPlaceholders) {
  EXPECT_EQ(navigator->SimulateMouseDragEvent(nullptr, kPlace, kPlace), 0);
  auto* const untouched = reinterpret_cast<ControlRef>(&server);
  ControlRef control = untouched;
  EXPECT_EQ(navigator->GetSbarControl(nullptr, 5, &control), 0);
  EXPECT_EQ(control, untouched);
  EXPECT_TRUE(machine.drain().empty());
}

TEST_F(WheelTick, SkipsEventsThatCannotBeCreated) {
  simulator::theFaults().add({"Mac.CGEventCreateScrollWheelEvent", 0, 0, 1});
  EXPECT_EQ(tick(1, 3, kOption), (Lines{keyLine(58, true), keyLine(58, false)}));
  simulator::theFaults().add({"Mac.CGEventCreateKeyboardEvent", 0, 0, 1});
  EXPECT_EQ(tick(1, 3, kOption), (Lines{wheelLine({3}, 0x80000, 500, 550), keyLine(58, false)}));
}

}  // namespace
