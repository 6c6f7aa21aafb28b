#include <gtest/gtest.h>

#include "simulator/scenario/Pacing.h"

namespace simulator {
namespace {

TEST(MotionKind, IsTheLargestOfTwistPushAndSlide) {
  EXPECT_EQ(motionKind({0, 0, 0, 9, 0, 9}), MotionKind::kRest) << "these axes do nothing";
  EXPECT_EQ(motionKind({4, 4, 4, 0, -5, 0}), MotionKind::kTwist);
  EXPECT_EQ(motionKind({4, -5, 4, 0, 4, 0}), MotionKind::kPush);
  EXPECT_EQ(motionKind({0, 4, -5, 0, 4, 0}), MotionKind::kSlide);
  EXPECT_EQ(motionKind({0, -32768, 0, 0, 32767, 0}), MotionKind::kPush);
}

TEST(MotionKind, IsASlideOnTies) {
  EXPECT_EQ(motionKind({0, 5, 0, 0, 5, 0}), MotionKind::kSlide);
  EXPECT_EQ(motionKind({5, 5, 0, 0, 0, 0}), MotionKind::kSlide);
}

TEST(WaitCounter, CountsDropsUntilTheRedraw) {
  WaitCounter wait;
  EXPECT_TRUE(wait.begin());
  EXPECT_FALSE(wait.begin()) << "a wait that has begun goes on";
  EXPECT_FALSE(wait.drop());
  EXPECT_EQ(wait.value(), 2);
  wait.end();
  EXPECT_EQ(wait.value(), 0);
}

TEST(WaitCounter, EndsWithTheFiftyFirstDrop) {
  WaitCounter wait;
  wait.begin();
  for (int drop = 1; drop <= 50; ++drop) EXPECT_FALSE(wait.drop()) << drop;
  EXPECT_TRUE(wait.drop());
  EXPECT_EQ(wait.value(), 0);
}

}  // namespace
}  // namespace simulator
