#include <gtest/gtest.h>

#include "mrvsim/live/Picture.h"

namespace {

using simulator::live::Picture;
using simulator::live::PixelRect;

std::uint32_t pixel(const Picture& picture, int x, int y) {
  return picture.pixels()[y * Picture::kWidth + x];
}

TEST(Picture, IsTheSameEachTimeAndOpaque) {
  const Picture one;
  const Picture other;
  EXPECT_TRUE(
      std::equal(one.pixels(), one.pixels() + Picture::kWidth * Picture::kHeight, other.pixels()));
  EXPECT_EQ(pixel(one, 3, 5) >> 24, 0xFFU);
  EXPECT_NE(pixel(one, 3, 5), pixel(one, 3, Picture::kHeight - 5));
}

TEST(Picture, GetsRoundSpots) {
  Picture picture;
  const std::uint32_t corner = pixel(picture, 96, 96);
  const PixelRect changed = picture.paint(100, 100, 10);
  EXPECT_EQ(changed.x, 95);
  EXPECT_EQ(changed.width, 10);
  EXPECT_EQ(pixel(picture, 100, 100), pixel(picture, 96, 100));
  EXPECT_EQ(pixel(picture, 95, 95), pixel(Picture(), 95, 95));
  EXPECT_NE(pixel(picture, 100, 96), corner);
}

TEST(Picture, CutsSpotsAtItsEdges) {
  Picture picture;
  const PixelRect changed = picture.paint(Picture::kWidth, -2, 100);
  EXPECT_EQ(changed.x + changed.width, Picture::kWidth);
  EXPECT_EQ(changed.y, 0);
  EXPECT_EQ(changed.height, 48);
  EXPECT_LE(picture.paint(-500, 30, 10).width, 0);
}

}  // namespace
