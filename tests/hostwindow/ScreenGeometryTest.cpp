#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "hostwindow/ScreenGeometry.h"

namespace {

TEST(ScreenGeometry, TruncatesPixelsTowardsZero) {
  EXPECT_EQ(pixel(0.999999), 0);
  EXPECT_EQ(pixel(-0.999999), 0);
  EXPECT_EQ(pixel(-1.5), -1);
  EXPECT_EQ(pixel(1.5), 1);
  EXPECT_EQ(pixel(-0.0), 0);
}

TEST(ScreenGeometry, WrapsPixelsAtSixteenBits) {
  EXPECT_EQ(pixel(32767.9), 32767);
  EXPECT_EQ(pixel(32768), -32768);
  EXPECT_EQ(pixel(-32768.9), -32768);
  EXPECT_EQ(pixel(-32769), 32767);
  EXPECT_EQ(pixel(65536), 0);
}

TEST(ScreenGeometry, TurnsNumbersJustBeyondThirtyTwoBitsIntoZero) {
  EXPECT_EQ(pixel(2147483647.0), -1);
  EXPECT_EQ(pixel(std::nextafter(2147483648.0, 0.0)), -1);
  EXPECT_EQ(pixel(2147483648.0), 0);
  EXPECT_EQ(pixel(2147483649.0), 0);
  EXPECT_EQ(pixel(-2147483648.0), 0);
  EXPECT_EQ(pixel(-2147483647.0), 1);
  EXPECT_EQ(pixel(std::nextafter(-2147483649.0, 0.0)), 0);
  EXPECT_EQ(pixel(-2147483649.0), 0);
  EXPECT_EQ(pixel(-2147483650.0), 0);
}

TEST(ScreenGeometry, TurnsNaNAndOverflowIntoZero) {
  EXPECT_EQ(pixel(std::numeric_limits<double>::quiet_NaN()), 0);
  EXPECT_EQ(pixel(std::numeric_limits<double>::infinity()), 0);
  EXPECT_EQ(pixel(-std::numeric_limits<double>::infinity()), 0);
  EXPECT_EQ(pixel(std::numeric_limits<double>::max()), 0);
}

TEST(ScreenGeometry, TruncatesTheMiddleTowardsZero) {
  EXPECT_EQ(middle(0, 5), 2);
  EXPECT_EQ(middle(-5, 0), -2);
  EXPECT_EQ(middle(-3, 2), 0);
  EXPECT_EQ(middle(-2, 3), 0);
}

TEST(ScreenGeometry, AddsEdgesInMoreThanSixteenBits) {
  EXPECT_EQ(middle(32767, 32767), 32767);
  EXPECT_EQ(middle(-32768, -32768), -32768);
  EXPECT_EQ(middle(-32768, 32767), 0);
}

TEST(ScreenGeometry, KeepsAPointInsideOrOnTheEdgesAndCentresAnyOther) {
  constexpr Rect kBounds = {.top = -10, .left = 20, .bottom = 30, .right = 61};
  for (short v = -12; v <= 32; ++v) {
    for (short h = 18; h <= 63; ++h) {
      const bool inside = v >= -10 && v <= 30 && h >= 20 && h <= 61;
      const Point place = placeInside(kBounds, {.v = v, .h = h});
      EXPECT_EQ(place.v, inside ? v : 10);
      EXPECT_EQ(place.h, inside ? h : 40);
    }
  }
}

}  // namespace
