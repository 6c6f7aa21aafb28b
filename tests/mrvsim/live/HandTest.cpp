#include <gtest/gtest.h>

#include "mrvsim/live/Hand.h"

namespace {

using namespace simulator::live;

/// Lets time pass in the steps of the device's samples.
void pass(Hand& hand, double seconds) {
  for (double passed = 0; passed < seconds; passed += 0.01) hand.advance(0.01);
}

TEST(Hand, RisesSmoothlyToAFullPushWhileAKeyIsHeld) {
  Hand hand;
  hand.press(kPush, 1, true);
  double before = 0;
  for (int sample = 0; sample < 30; ++sample) {
    hand.advance(0.01);
    EXPECT_GT(hand.deflection()[kPush], before);
    EXPECT_LT(hand.deflection()[kPush] - before, 0.1);
    before = hand.deflection()[kPush];
  }
  pass(hand, 1);
  EXPECT_EQ(hand.deflection()[kPush], 1.0);
}

TEST(Hand, ComesToRestSoonerThanItWasPushed) {
  Hand hand;
  hand.press(kTwist, -1, true);
  pass(hand, 1);
  hand.press(kTwist, -1, false);
  hand.advance(0.01);
  EXPECT_LT(hand.deflection()[kTwist], -0.5);
  pass(hand, 0.3);
  EXPECT_EQ(hand.deflection()[kTwist], 0.0);
}

TEST(Hand, StaysAtRestWhileOppositeKeysAreHeld) {
  Hand hand;
  hand.press(kSideways, 1, true);
  hand.press(kSideways, -1, true);
  pass(hand, 0.5);
  EXPECT_EQ(hand.deflection(), Deflection{});
}

TEST(Hand, FollowsAPullAndGivesInWhenItIsLetGo) {
  Hand hand;
  hand.pull(Deflection{0.5, 0, -0.25, 0, 0, 0});
  pass(hand, 0.2);
  EXPECT_EQ(hand.deflection(), (Deflection{0.5, 0, -0.25, 0, 0, 0}));
  hand.pull(std::nullopt);
  pass(hand, 0.5);
  EXPECT_EQ(hand.deflection(), Deflection{});
}

TEST(Hand, TakesADeviceAsItIsAndKeepsToTheFullWay) {
  Hand hand;
  hand.follow(Deflection{0, 0.75, 0, 0, 0, 0});
  EXPECT_EQ(hand.deflection()[kPush], 0.75);
  hand.press(kPush, 1, true);
  pass(hand, 1);
  EXPECT_EQ(hand.deflection()[kPush], 1.0);
}

TEST(Hand, LetsGoOfEverythingAtOnce) {
  Hand hand;
  hand.press(kPush, 1, true);
  hand.follow(Deflection{0, 0, 0, 0, 1, 0});
  hand.letGo();
  pass(hand, 0.5);
  EXPECT_EQ(hand.deflection(), Deflection{});
}

TEST(Hand, CountsAShareOfTheFullDeflection) {
  Hand hand;
  hand.follow(Deflection{0, -0.5, 0, 0, 0, 1});
  EXPECT_EQ(hand.sample(350), (Sample{0, -175, 0, 0, 0, 350}));
}

}  // namespace
