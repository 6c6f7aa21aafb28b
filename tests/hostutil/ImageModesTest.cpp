#include <gtest/gtest.h>

#include "hostutil/ImageModes.h"

namespace {

TEST(ImageModes, GiveMultichannelMode7TheDefaultPlanes) { EXPECT_EQ(CSPlanesFromMode(7, 5), 5); }

TEST(ImageModes, GiveMode4FourPlanesWhateverTheDefault) { EXPECT_EQ(CSPlanesFromMode(4, 5), 4); }

TEST(ImageModes, GiveEveryModeItsPlanes) {
  constexpr short kDefault = 99;
  constexpr short kPlanes[] = {1, 1, 3, 3, 4, 3, 3, kDefault, 1, 3, 1, 3, 3, 4, kDefault, 1, 3, 1};
  for (short mode = 0; mode < 18; ++mode) {
    EXPECT_EQ(CSPlanesFromMode(mode, kDefault), kPlanes[mode]) << "mode " << mode;
  }
}

TEST(ImageModes, GiveModesOutOfRangeTheDefaultPlanes) {
  for (const int mode : {-32768, -1, 18, 32767}) {
    EXPECT_EQ(CSPlanesFromMode(static_cast<short>(mode), 5), 5) << "mode " << mode;
  }
}

TEST(ImageModes, GiveMode18NoSpace) { EXPECT_EQ(CSModeToSpace(18), -1); }

TEST(ImageModes, GiveEveryModeItsSpace) {
  constexpr short kSpaces[] = {-1, 4, -1, 0, 2, 5, 1, -1, 4, 3, 4, 0, 3, 2, -1, 4, 0, 4};
  for (short mode = 0; mode < 18; ++mode) {
    EXPECT_EQ(CSModeToSpace(mode), kSpaces[mode]) << "mode " << mode;
  }
}

TEST(ImageModes, GiveModesOutOfRangeNoSpace) {
  for (const int mode : {-32768, -1, 18, 32767}) {
    EXPECT_EQ(CSModeToSpace(static_cast<short>(mode)), -1) << "mode " << mode;
  }
}

}  // namespace
