#include <gtest/gtest.h>

#include "simulator/host/model/TypeIds.h"
#include "simulator/host/model/Values.h"

namespace simulator {
namespace {

ContainerPtr nestedTo(int depth) {
  auto container = std::make_shared<Container>();
  for (int i = 0; i < depth; ++i) {
    auto outer = std::make_shared<Container>();
    outer->put(1, {kTypeObject, Object{2, std::move(container)}});
    container = std::move(outer);
  }
  return container;
}

TEST(Values, DeepContainersAreComparedAndFreedWithoutRecursion) {
  const ContainerPtr left = nestedTo(100000);
  const ContainerPtr right = nestedTo(100000);
  EXPECT_TRUE(equal(*left, *right));
  EXPECT_FALSE(equal(*left, *nestedTo(99999)));
}

TEST(Values, EqualityLooksAtEverything) {
  Container left;
  left.put(1, {kTypeInteger, std::int32_t{1}});
  Container right = left;
  EXPECT_TRUE(equal(left, right));
  right.put(1, {kTypeInteger, std::int32_t{2}});
  EXPECT_FALSE(equal(left, right));
  right.put(1, {kTypeFloat, 1.0});
  EXPECT_FALSE(equal(left, right));
}

TEST(TypeIds, NumbersStringsInOrderOfAppearance) {
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
