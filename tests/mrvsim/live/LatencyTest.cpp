#include <gtest/gtest.h>

#include "mrvsim/live/Latency.h"

namespace {

using simulator::live::Latency;

TEST(Latency, IsZeroWithoutTimes) { EXPECT_EQ(Latency().percentile(0.5), 0.0); }

TEST(Latency, KnowsTheMedianAndTheNinetyNinthPercentile) {
  Latency latency;
  for (int time = 100; time >= 1; --time) latency.add(time * 1'000'000);
  EXPECT_EQ(latency.percentile(0.5), 50.0);
  EXPECT_EQ(latency.percentile(0.99), 99.0);
  EXPECT_EQ(latency.percentile(1), 100.0);
}

TEST(Latency, ForgetsAllButTheLastThousandTimes) {
  Latency latency;
  for (int i = 0; i < 300; ++i) latency.add(9'000'000);
  for (int i = 0; i < 1000; ++i) latency.add(1'000'000);
  EXPECT_EQ(latency.count(), 1000U);
  EXPECT_EQ(latency.percentile(1), 1.0);
}

}  // namespace
