#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "navigate/PanStep.h"

namespace {

std::int16_t lowSixteenBits(double truncated) {
  return static_cast<std::int16_t>(static_cast<std::int64_t>(truncated));
}

/// The calculation step by step, with the first quotient in the precision of `Quotient` and
/// everything else in double.
template <class Quotient>
int plainEnd(int s) {
  if (s == 0) return 5;
  volatile Quotient quotient = static_cast<Quotient>(500);
  quotient = quotient / static_cast<Quotient>(s);
  const double half = static_cast<double>(quotient) / 2;
  const double signedSquare = (s < 0 ? -1.0 : 1.0) * (s / half);
  return lowSixteenBits(std::trunc(signedSquare + 5.0));
}

TEST(PanStep, AgreesWithAPlainCalculationForEveryDeflection) {
  for (int s = -32768; s <= 32767; ++s) ASSERT_EQ(panStepEnd(s), plainEnd<float>(s)) << s;
}

TEST(PanStep, DependsOnTheSinglePrecisionOfTheFirstQuotient) {
  int differing = 0;
  for (int s = -32768; s <= 32767; ++s) differing += panStepEnd(s) != plainEnd<double>(s);
  EXPECT_GT(differing, 0);
}

/// 350·350/250 is exactly 490; the quotient in single precision makes it slightly less.
TEST(PanStep, FallsShortOfTheWholeNumberAtThreeHundredFifty) {
  EXPECT_EQ(panStepEnd(350), 494);
  EXPECT_EQ(panStepEnd(-350), -484);
  EXPECT_EQ(plainEnd<double>(350), 495);
  EXPECT_EQ(plainEnd<double>(-350), -485);
}

TEST(PanStep, EndsSmallDeflectionsAtTheTruncatedIntegerQuotient) {
  // s·|s|/250 + 5 in integers; integer division truncates towards zero.
  for (int s = -50; s <= 50; ++s) EXPECT_EQ(panStepEnd(s), (s * std::abs(s) + 1250) / 250) << s;
}

TEST(PanStep, EndsKnownDeflectionsAtKnownPixels) {
  EXPECT_EQ(panStepEnd(0), 5);
  EXPECT_EQ(panStepEnd(-100), -35);
  EXPECT_EQ(panStepEnd(15), 5);
  EXPECT_EQ(panStepEnd(16), 6);
  EXPECT_EQ(panStepEnd(-15), 4);
  EXPECT_EQ(panStepEnd(-1), 4);
  EXPECT_EQ(panStepEnd(-30), 1);
}

TEST(PanStep, KeepsTheLowSixteenBitsOfLargeDeflections) {
  EXPECT_EQ(panStepEnd(-32768), static_cast<std::int16_t>(-4294962));
  EXPECT_EQ(panStepEnd(32767), static_cast<std::int16_t>(4294710));
}

}  // namespace
