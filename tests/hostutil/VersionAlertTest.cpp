#include <gtest/gtest.h>

#include "hostutil/HostUtilities.h"

namespace {

TEST(VersionAlert, ShowsNothingAndReturnsZero) {
  constexpr unsigned char kVersion[] = "\0035.0";
  testing::internal::CaptureStdout();
  EXPECT_EQ(ShowVersionAlert(kVersion), 0);
  EXPECT_EQ(ShowVersionAlert(nullptr), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

}  // namespace
