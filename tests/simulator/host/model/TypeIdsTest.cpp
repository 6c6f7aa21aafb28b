#include <gtest/gtest.h>

#include "simulator/host/model/TypeIds.h"

namespace simulator {
namespace {

TEST(TypeIds, NumberStringsInOrderOfAppearance) {
  TypeIds ids;
  EXPECT_EQ(ids.stringOf(1), nullptr);
  EXPECT_EQ(ids.idOf("a"), 1u);
  EXPECT_EQ(ids.idOf("b"), 2u);
  EXPECT_EQ(ids.idOf("a"), 1u);
  EXPECT_EQ(*ids.stringOf(2), "b");
  EXPECT_EQ(ids.stringOf(0), nullptr);
  EXPECT_EQ(ids.stringOf(3), nullptr);
}

}  // namespace
}  // namespace simulator
