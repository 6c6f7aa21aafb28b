#include <gtest/gtest.h>

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

TEST(Values, AreComparedAndFreedWithoutRecursion) {
  const ContainerPtr left = nestedTo(100000);
  const ContainerPtr right = nestedTo(100000);
  EXPECT_TRUE(equal(*left, *right));
  EXPECT_FALSE(equal(*left, *nestedTo(99999)));
}

TEST(Values, AreEqualOnlyIfTypesAndValuesAre) {
  Container left;
  left.put(1, {kTypeInteger, std::int32_t{1}});
  Container right = left;
  EXPECT_TRUE(equal(left, right));
  right.put(1, {kTypeInteger, std::int32_t{2}});
  EXPECT_FALSE(equal(left, right));
  right.put(1, {kTypeFloat, 1.0});
  EXPECT_FALSE(equal(left, right));
}

}  // namespace
}  // namespace simulator
