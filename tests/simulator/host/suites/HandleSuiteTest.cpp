#include "tests/simulator/host/HostFixture.h"

namespace simulator {
namespace {

using HandleSuite = HostTest;

TEST_F(HandleSuite, MakesBlocksReachedThroughTheirMasterPointer) {
  const Handle handle = handles_->New(4);
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(handles_->GetSize(handle), 4);
  (*handle)[3] = 'x';
  EXPECT_EQ(handles_->SetSize(handle, 4000), 0);
  EXPECT_EQ((*handle)[3], 'x');
  EXPECT_EQ((*handle)[3999], 0);
  handles_->Dispose(handle);
}

TEST_F(HandleSuite, DoesNotMoveALockedBlock) {
  const Handle handle = handles_->New(4);
  Ptr address = nullptr;
  Boolean before = 1;
  handles_->SetLock(handle, 1, &address, &before);
  EXPECT_EQ(address, *handle);
  EXPECT_EQ(before, 0);
  EXPECT_EQ(handles_->SetSize(handle, 8), memFullErr);
  handles_->SetLock(handle, 0, nullptr, &before);
  EXPECT_EQ(before, 1);
  EXPECT_EQ(handles_->SetSize(handle, 8), 0);
  handles_->DisposeRegularHandle(handle);
}

TEST_F(HandleSuite, RefusesNegativeSizes) {
  EXPECT_EQ(handles_->New(-1), nullptr);
  const Handle handle = handles_->New(0);
  EXPECT_EQ(handles_->SetSize(handle, -1), paramErr);
  handles_->Dispose(handle);
}

TEST_F(HandleSuite, ReportsABlockDisposedOfTwice) {
  const Handle handle = handles_->New(4);
  handles_->Dispose(handle);
  EXPECT_EQ(*handle, nullptr);
  handles_->Dispose(handle);
  EXPECT_EQ(handles_->GetSize(handle), 0);
  EXPECT_THAT(misuses(),
              testing::ElementsAre("HandleSuite2.Dispose: handle 1 was disposed of before",
                                   "HandleSuite2.GetSize: handle 1 was disposed of before"));
}

TEST_F(HandleSuite, ReportsAForeignHandle) {
  Ptr own = nullptr;
  handles_->DisposeRegularHandle(&own);
  handles_->Dispose(nullptr);
  EXPECT_THAT(
      misuses(),
      testing::ElementsAre("HandleSuite2.DisposeRegularHandle: the handle given is not the host's",
                           "HandleSuite2.Dispose: the handle given is not the host's"));
}

TEST_F(HandleSuite, ReportsABlockThatIsNotDisposedOf) {
  handles_->New(4);
  EXPECT_EQ(theHost().objectsOwned(), 1u);
  theHost().reportLeaks();
  EXPECT_THAT(misuses(), testing::ElementsAre("leaked: handle 1, made by HandleSuite2.New"));
}

TEST_F(HandleSuite, MakesNoBlockWhenToldToFail) {
  theFaults().add({.procedure = "HandleSuite2.New", .error = -108});
  EXPECT_EQ(handles_->New(4), nullptr);
}

}  // namespace
}  // namespace simulator
