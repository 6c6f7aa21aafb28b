#include <gtest/gtest.h>

#include <utility>

#include "suites/HostObjects.h"
#include "suites/Suites.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

TEST(HostObjects, AreFreedOnceAtTheEndOfTheirLifetime) {
  Machine machine;
  {
    ActionDescriptor first;
    ASSERT_EQ(sPSActionDescriptor->Make(first.out()), 0);
    EXPECT_TRUE(first);
    ActionDescriptor second = std::move(first);
    EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): checks the state after the move
    EXPECT_TRUE(second);
    EXPECT_EQ(theHost().objectsOwned(), 1U);
  }
  EXPECT_EQ(theHost().objectsOwned(), 0U);
}

TEST(HostObjects, AreFreedWhenAnotherIsMadeInTheirPlace) {
  Machine machine;
  ActionReference reference;
  ASSERT_EQ(sPSActionReference->Make(reference.out()), 0);
  const PIActionReference first = reference.get();
  ASSERT_EQ(sPSActionReference->Make(reference.out()), 0);
  EXPECT_NE(reference.get(), first);
  EXPECT_EQ(theHost().objectsOwned(), 1U);
}

TEST(HostObjects, AreFreedWhenAnotherIsAssigned) {
  Machine machine;
  ActionList kept;
  ASSERT_EQ(sPSActionList->Make(kept.out()), 0);
  {
    ActionList other;
    ASSERT_EQ(sPSActionList->Make(other.out()), 0);
    const PIActionList wanted = other.get();
    kept = std::move(other);
    EXPECT_EQ(kept.get(), wanted);
  }
  EXPECT_EQ(theHost().objectsOwned(), 1U);
}

TEST(HostObjects, AreFreedEvenIfTheirSuiteWasReleasedMeanwhile) {
  Machine machine;
  {
    ActionDescriptor descriptor;
    ASSERT_EQ(sPSActionDescriptor->Make(descriptor.out()), 0);
    PIUSuitesRelease();
  }
  EXPECT_EQ(theHost().objectsOwned(), 0U);
}

TEST(HostObjects, LeakSilentlyIfTheirSuiteIsRefused) {
  Machine machine;
  machine.expectMisuse("leaked: descriptor 1, made by ActionDescriptor.Make");
  {
    ActionDescriptor descriptor;
    ASSERT_EQ(sPSActionDescriptor->Make(descriptor.out()), 0);
    PIUSuitesRelease();
    theFaults().add({"Basic.AcquireSuite", -5, 0, 1});
  }
  EXPECT_EQ(theFaults().fired(), 1U);
  EXPECT_EQ(theHost().objectsOwned(), 1U);
}

}  // namespace
