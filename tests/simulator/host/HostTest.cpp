#include <set>
#include <thread>

#include "tests/simulator/host/HostFixture.h"

namespace simulator {
namespace {

using HostHandles = HostTest;
using HostMisuseReport = HostTest;

TEST_F(HostMisuseReport, NamesAnObjectThatIsNotFreed) {
  PIActionDescriptor descriptor = nullptr;
  PIActionList list = nullptr;
  PIActionReference reference = nullptr;
  ASZString string = nullptr;
  descriptors_->Make(&descriptor);
  lists_->Make(&list);
  references_->Make(&reference);
  strings_->MakeFromCString("x", 1, &string);
  void* block = nullptr;
  theHost().basicSuite()->AllocateBlock(1, &block);
  EXPECT_EQ(theHost().objectsOwned(), 5u);
  theHost().basicSuite()->FreeBlock(block);
  theHost().reportLeaks();
  EXPECT_THAT(misuses(),
              testing::ElementsAre("leaked: descriptor 1, made by ActionDescriptor.Make",
                                   "leaked: list 1, made by ActionList.Make",
                                   "leaked: reference 1, made by ActionReference.Make",
                                   "leaked: string 1, made by ASZStringSuite.MakeFromCString"));
  theHost().reportLeaks();
  EXPECT_THAT(misuses(), testing::IsEmpty());
}

TEST_F(HostMisuseReport, NamesTheProcedureThatHandedOutALeakedObject) {
  PIActionDescriptor answer = nullptr;
  control_->Get(&answer, referenceOf(R"([{"form": "Clss", "class": "capp"}])"));
  theHost().reportLeaks();
  EXPECT_THAT(misuses(), testing::ElementsAre("leaked: descriptor 1, made by ActionControl.Get"));
}

TEST_F(HostMisuseReport, NamesAnObjectFreedTwice) {
  PIActionList list = nullptr;
  lists_->Make(&list);
  EXPECT_EQ(lists_->Free(list), 0);
  EXPECT_EQ(lists_->Free(list), paramErr);
  EXPECT_THAT(misuses(), testing::ElementsAre("ActionList.Free: list 1 was freed before"));
}

TEST_F(HostMisuseReport, NamesAnObjectUsedAfterItWasFreed) {
  PIActionDescriptor descriptor = nullptr;
  descriptors_->Make(&descriptor);
  descriptors_->Free(descriptor);
  int32 value = 5;
  EXPECT_EQ(descriptors_->GetInteger(descriptor, kKeyTool, &value), paramErr);
  EXPECT_EQ(value, 5);
  EXPECT_THAT(misuses(),
              testing::ElementsAre("ActionDescriptor.GetInteger: descriptor 1 was freed before"));
}

TEST_F(HostMisuseReport, NamesAnObjectOfAnotherKind) {
  PIActionReference reference = referenceOf("[]");
  EXPECT_EQ(descriptors_->Free(reinterpret_cast<PIActionDescriptor>(reference)), paramErr);
  EXPECT_THAT(misuses(),
              testing::ElementsAre("ActionDescriptor.Free: reference given for a descriptor"));
}

TEST_F(HostMisuseReport, NamesAHandleThatTheHostNeverHandedOut) {
  EXPECT_EQ(lists_->Free(reinterpret_cast<PIActionList>(0x1234)), paramErr);
  EXPECT_EQ(lists_->Free(nullptr), paramErr);
  EXPECT_EQ(lists_->Free(reinterpret_cast<PIActionList>(0x600000009992)), paramErr);
  EXPECT_EQ(lists_->Free(reinterpret_cast<PIActionList>(0x60000000999F)), paramErr);
  EXPECT_THAT(misuses(), testing::ElementsAre("ActionList.Free: 0x1234 is no list",
                                              "ActionList.Free: null is no list",
                                              "ActionList.Free: 0x600000009992 is no list",
                                              "ActionList.Free: object given for a list"));
}

TEST_F(HostMisuseReport, LeavesOutNullPassedToAQuery) {
  Boolean has = 0;
  EXPECT_EQ(descriptors_->HasKey(nullptr, kKeyTool, &has), paramErr);
}

TEST_F(HostHandles, AreNeverHandedOutTwice) {
  std::set<PIActionDescriptor> seen;
  for (int i = 0; i < 1000; ++i) {
    PIActionDescriptor descriptor = nullptr;
    descriptors_->Make(&descriptor);
    EXPECT_TRUE(seen.insert(descriptor).second);
    descriptors_->Free(descriptor);
  }
}

TEST_F(HostMisuseReport, NamesACallOnAnotherThread) {
  PIActionDescriptor descriptor = nullptr;
  std::thread([&] { descriptors_->Make(&descriptor); }).join();
  EXPECT_EQ(descriptors_->Free(descriptor), 0);
  EXPECT_THAT(misuses(), testing::ElementsAre(
                             "ActionDescriptor.Make: called on another thread than the main one"));
}

TEST_F(HostMisuseReport, LeavesOutObjectsFromOutside) {
  descriptorOf("[]");
  listOf("[]");
  referenceOf("[]");
  EXPECT_EQ(theHost().objectsOwned(), 0u);
  theHost().reportLeaks();
  EXPECT_THAT(misuses(), testing::IsEmpty());
}

TEST_F(HostMisuseReport, ListsLeakedMemoryBlocksInTheirOrder) {
  void* block = nullptr;
  for (int i = 0; i < 2; ++i) theHost().basicSuite()->AllocateBlock(1, &block);
  theHost().basicSuite()->FreeBlock(block);
  theHost().reportLeaks();
  EXPECT_THAT(misuses(), testing::ElementsAre("leaked: memory block 1"));
}

}  // namespace
}  // namespace simulator
