#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>

#include "navigate/Dominance.h"

namespace {

TEST(Dominance, GivesATwistToTheBrush) {
  EXPECT_EQ(dominantAct({.x = 4, .y = -4, .z = 4, .rz = -5}), Act::kBrush);
}

TEST(Dominance, GivesAPushToTheZoom) { EXPECT_EQ(dominantAct({.z = 10}), Act::kZoom); }

TEST(Dominance, PansAtRest) { EXPECT_EQ(dominantAct({}), Act::kPan); }

TEST(Dominance, PansOnAThreefoldTie) {
  EXPECT_EQ(dominantAct({.x = 3, .y = -4, .z = 4, .rz = 4}), Act::kPan);
}

TEST(Dominance, PansIfATwistOnlyEqualsAnotherMotion) {
  EXPECT_EQ(dominantAct({.z = 5, .rz = 5}), Act::kPan);
  EXPECT_EQ(dominantAct({.x = -5, .rz = 5}), Act::kPan);
  EXPECT_EQ(dominantAct({.y = 5, .rz = -5}), Act::kPan);
}

TEST(Dominance, PansIfAPushOnlyEqualsAnotherMotion) {
  EXPECT_EQ(dominantAct({.z = -5, .rz = 5}), Act::kPan);
  EXPECT_EQ(dominantAct({.x = 5, .z = -5}), Act::kPan);
  EXPECT_EQ(dominantAct({.y = -5, .z = -5}), Act::kPan);
}

TEST(Dominance, RanksTheSmallestValueAboveTheLargest) {
  EXPECT_EQ(dominantAct({.x = 32767, .y = 32767, .z = 32767, .rz = -32768}), Act::kBrush);
  EXPECT_EQ(dominantAct({.x = 32767, .y = 32767, .z = -32768, .rz = 32767}), Act::kZoom);
  EXPECT_EQ(dominantAct({.x = -32768, .z = 32767, .rz = 32767}), Act::kPan);
}

TEST(Dominance, IgnoresTheOtherTwoRotations) {
  EXPECT_EQ(dominantAct({.z = 1, .rx = 32767, .ry = -32768}), Act::kZoom);
  EXPECT_EQ(dominantAct({.rx = 32767, .ry = -32768}), Act::kPan);
}

/// Compares with a second implementation that uses magnitudes. The few values make ties frequent.
TEST(Dominance, AgreesWithAComparisonOfMagnitudes) {
  constexpr std::array<std::int16_t, 12> kValues = {0,  1,    -1,    2,      -2,     181,
                                                    46, -181, 32767, -32767, -32768, 7};
  std::mt19937 random(7);
  const auto draw = [&] { return kValues[random() % kValues.size()]; };
  for (int i = 0; i < 100'000; ++i) {
    const Motion m = {draw(), draw(), draw(), draw(), draw(), draw()};
    const int push = std::abs(m.z);
    const int twist = std::abs(m.rz);
    const int sideways = std::max(std::abs(m.x), std::abs(m.y));
    const Act expected = twist > std::max(push, sideways)   ? Act::kBrush
                         : push > std::max(twist, sideways) ? Act::kZoom
                                                            : Act::kPan;
    ASSERT_EQ(dominantAct(m), expected) << m.x << ' ' << m.y << ' ' << m.z << ' ' << m.rz;
  }
}

}  // namespace
