// Conversion of lengths.
#include <HostTerms.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "hostactions/DescriptorUtilities.h"

namespace {

constexpr std::uint32_t kUnitAngle = fourCharCode("#Ang");
constexpr double kOverflow = std::numeric_limits<double>::infinity();

}  // namespace

TEST(DescriptorUtilitiesUnits, ConvertSeventyTwoPointsAt300To300PixelsAndBack) {
  EXPECT_EQ(UnitsToPixels(72, kUnitDistance, 300), 300);
  EXPECT_EQ(PixelsToUnits(300, kUnitDistance, 300), 72);
}

TEST(DescriptorUtilitiesUnits, GiveZeroAtResolution0) {
  EXPECT_EQ(PixelsToUnits(5, kUnitDistance, 0), 0);
  EXPECT_EQ(PixelsToUnits(5, kUnitDistance, -0.0), 0);
  EXPECT_EQ(UnitsToPixels(5, kUnitDistance, 0), 0);
}

TEST(DescriptorUtilitiesUnits, KeepAValueInAnUnknownUnitToPixelsAndGiveZeroFromPixels) {
  EXPECT_EQ(PixelsToUnits(5, kUnitPercent, 300), 0);
  EXPECT_EQ(UnitsToPixels(5, kUnitPercent, 300), 5);
  EXPECT_EQ(PixelsToUnits(5, kUnitAngle, 300), 0);
  EXPECT_EQ(UnitsToPixels(5, kUnitAngle, 300), 5);
  EXPECT_EQ(PixelsToUnits(5, 0, 300), 0);
  EXPECT_EQ(UnitsToPixels(5, 0, 300), 5);
}

TEST(DescriptorUtilitiesUnits, KeepPixelsUnchangedAtEveryResolution) {
  for (const double resolution : {0.0, 72.0, 300.0, -1.0}) {
    EXPECT_EQ(UnitsToPixels(12.5, kUnitPixels, resolution), 12.5);
    EXPECT_EQ(PixelsToUnits(12.5, kUnitPixels, resolution), 12.5);
  }
}

TEST(DescriptorUtilitiesUnits, GuardOnlyAResolutionOfExactly0) {
  EXPECT_EQ(PixelsToUnits(-144, kUnitDistance, 72), -144);
  EXPECT_EQ(PixelsToUnits(300, kUnitDistance, -300), -72);
  const double least = std::numeric_limits<double>::denorm_min();
  EXPECT_EQ(PixelsToUnits(1, kUnitDistance, least), kOverflow);
}

TEST(DescriptorUtilitiesUnits, MultiplyFromLeftToRight) {
  // value x resolution overflows before the division by 72 could bring it back.
  EXPECT_EQ(UnitsToPixels(1e308, kUnitDistance, 72), kOverflow);
  EXPECT_EQ(PixelsToUnits(1e308, kUnitDistance, 72), kOverflow);
  EXPECT_EQ(UnitsToPixels(0.1, kUnitDistance, 3), 0.1 * 3 / 72.0);
}

TEST(DescriptorUtilitiesUnits, KeepNaN) {
  EXPECT_TRUE(std::isnan(UnitsToPixels(std::nan(""), kUnitDistance, 72)));
  EXPECT_TRUE(std::isnan(PixelsToUnits(std::nan(""), kUnitDistance, 72)));
}
