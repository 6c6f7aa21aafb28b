#include <gtest/gtest.h>

#include "device/MrvSemaphore.h"

namespace {

TEST(MrvSemaphore, IsOneObject) { EXPECT_EQ(&MrvSemaphore::Instance(), &MrvSemaphore::Instance()); }

TEST(MrvSemaphore, CanAlwaysBeAcquired) {
  MrvSemaphore& semaphore = MrvSemaphore::Instance();
  EXPECT_TRUE(semaphore.Acquire());
  EXPECT_TRUE(semaphore.Acquire());
  semaphore.Release();
  semaphore.Release();
  semaphore.Release();
  EXPECT_TRUE(semaphore.Acquire());
}

}  // namespace
