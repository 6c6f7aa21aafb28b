#include <gtest/gtest.h>

#include "hostutil/ImageModes.h"

namespace {

TEST(ImageModes, planes_of_the_multichannel_mode_7_are_the_default) {
  EXPECT_EQ(CSPlanesFromMode(7, 5), 5);
}

TEST(ImageModes, planes_of_mode_4_are_4_whatever_the_default) {
  EXPECT_EQ(CSPlanesFromMode(4, 5), 4);
}

TEST(ImageModes, planes_of_every_mode) {
  constexpr short kDefault = 99;
  constexpr short kPlanes[] = {1, 1, 3, 3, 4, 3, 3, kDefault, 1, 3, 1, 3, 3, 4, kDefault, 1, 3, 1};
  for (short mode = 0; mode < 18; ++mode) {
    EXPECT_EQ(CSPlanesFromMode(mode, kDefault), kPlanes[mode]) << "mode " << mode;
  }
}

TEST(ImageModes, planes_of_modes_outside_the_table_are_the_default) {
  for (const int mode : {-32768, -1, 18, 32767}) {
    EXPECT_EQ(CSPlanesFromMode(static_cast<short>(mode), 5), 5) << "mode " << mode;
  }
}

TEST(ImageModes, mode_18_has_no_space) { EXPECT_EQ(CSModeToSpace(18), -1); }

TEST(ImageModes, space_of_every_mode) {
  constexpr short kSpaces[] = {-1, 4, -1, 0, 2, 5, 1, -1, 4, 3, 4, 0, 3, 2, -1, 4, 0, 4};
  for (short mode = 0; mode < 18; ++mode) {
    EXPECT_EQ(CSModeToSpace(mode), kSpaces[mode]) << "mode " << mode;
  }
}

TEST(ImageModes, modes_outside_the_table_have_no_space) {
  for (const int mode : {-32768, -1, 18, 32767}) {
    EXPECT_EQ(CSModeToSpace(static_cast<short>(mode)), -1) << "mode " << mode;
  }
}

}  // namespace
