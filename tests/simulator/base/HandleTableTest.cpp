#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "simulator/base/HandleTable.h"

namespace simulator {
namespace {

TEST(HandleTable, FindsEachValueByItsHandle) {
  HandleTable<std::string> table;
  const void* one = table.insert("one");
  const void* two = table.insert("two");
  ASSERT_NE(table.find(one), nullptr);
  EXPECT_EQ(*table.find(one), "one");
  EXPECT_EQ(*table.find(two), "two");
  EXPECT_EQ(table.live(), 2U);
}

TEST(HandleTable, FindsNothingByAHandleThatItNeverIssued) {
  HandleTable<int> table;
  const void* one = table.insert(1);
  const auto* bytes = static_cast<const char*>(one);
  for (const void* handle :
       {static_cast<const void*>(nullptr), static_cast<const void*>(bytes + 1),
        static_cast<const void*>(bytes + 16), static_cast<const void*>(&table)}) {
    EXPECT_EQ(table.find(handle), nullptr);
    table.erase(handle);
  }
  EXPECT_EQ(table.live(), 1U);
}

TEST(HandleTable, FindsNothingByAStaleHandleEvenIfItsSlotIsUsedAgain) {
  HandleTable<int> table;
  std::set<const void*> handles;
  const void* stale = nullptr;
  for (int i = 0; i < 1000; ++i) {
    const void* handle = table.insert(i);
    EXPECT_TRUE(handles.insert(handle).second) << "issued twice: " << handle;
    EXPECT_EQ(table.find(stale), nullptr);
    table.erase(handle);
    table.erase(handle);
    stale = handle;
  }
  EXPECT_EQ(table.live(), 0U);
}

TEST(HandleTable, DestroysAValueWhenItIsErased) {
  HandleTable<std::shared_ptr<int>> table;
  const auto value = std::make_shared<int>(1);
  const void* handle = table.insert(value);
  EXPECT_EQ(value.use_count(), 2);
  table.erase(handle);
  EXPECT_EQ(value.use_count(), 1);
}

TEST(HandleTable, KeepsAValuesAddressWhileOthersComeAndGo) {
  HandleTable<int> table;
  const void* kept = table.insert(7);
  const int* address = table.find(kept);
  std::vector<const void*> others;
  for (int i = 0; i < 1000; ++i) others.push_back(table.insert(i));
  for (const void* other : others) table.erase(other);
  EXPECT_EQ(table.find(kept), address);
  EXPECT_EQ(*address, 7);
}

TEST(HandleTable, VisitsLiveValuesInTheOrderOfTheirSlots) {
  HandleTable<int> table;
  table.insert(1);
  const void* two = table.insert(2);
  table.insert(3);
  table.erase(two);
  std::vector<int> visited;
  const auto visit = [&](int value) { visited.push_back(value); };
  table.forEach(visit);
  EXPECT_EQ(visited, (std::vector{1, 3}));
  table.insert(4);
  visited.clear();
  table.forEach(visit);
  EXPECT_EQ(visited, (std::vector{1, 4, 3}));
}

}  // namespace
}  // namespace simulator
