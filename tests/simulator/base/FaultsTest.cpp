#include "tests/simulator/host/HostFixture.h"

namespace simulator {
namespace {

using FaultsInHostCalls = HostTest;

TEST_F(FaultsInHostCalls, FailTheNthCallBeforeItWritesAnything) {
  theFaults().add(
      {.procedure = "ActionDescriptor.GetInteger", .error = -7, .after = 1, .times = 1});
  PIActionDescriptor descriptor = descriptorOf(R"([{"key": "KeyA", "type": "long", "value": 3}])");
  int32 value = 0;
  EXPECT_EQ(descriptors_->GetInteger(descriptor, fourCharCode("KeyA"), &value), 0);
  EXPECT_EQ(value, 3);
  value = 5;
  EXPECT_EQ(descriptors_->GetInteger(descriptor, fourCharCode("KeyA"), &value), -7);
  EXPECT_EQ(value, 5);
  EXPECT_EQ(descriptors_->GetInteger(descriptor, fourCharCode("KeyA"), &value), 0);
}

TEST_F(FaultsInHostCalls, TakePrecedenceOverTheHostsOwnError) {
  theFaults().add({.procedure = "ActionDescriptor.GetInteger", .error = -7});
  int32 value = 0;
  EXPECT_EQ(descriptors_->GetInteger(descriptorOf("[]"), kKeyTool, &value), -7);
}

TEST_F(FaultsInHostCalls, DoNotKeepFreeFromReleasingTheObject) {
  theFaults().add({.procedure = "ActionDescriptor.Free", .error = -7});
  PIActionDescriptor descriptor = nullptr;
  descriptors_->Make(&descriptor);
  EXPECT_EQ(descriptors_->Free(descriptor), -7);
  EXPECT_EQ(theHost().objectsOwned(), 0u);
}

TEST_F(FaultsInHostCalls, CanRefuseASuite) {
  theFaults().add({.procedure = "Basic.AcquireSuite", .error = 42});
  const void* table = this;
  const int held = theHost().suitesHeld();
  EXPECT_EQ(theHost().basicSuite()->AcquireSuite(kPSAliasSuite, 1, &table), 42);
  EXPECT_EQ(table, this);
  EXPECT_EQ(theHost().suitesHeld(), held);
  EXPECT_EQ(lines_.back()["result"], 42);
}

TEST_F(FaultsInHostCalls, KeepMakeFromMakingAnObject) {
  theFaults().add({.procedure = "*", .error = -7});
  PIActionReference reference = nullptr;
  EXPECT_EQ(references_->Make(&reference), -7);
  EXPECT_EQ(reference, nullptr);
  EXPECT_EQ(theHost().objectsOwned(), 0u);
}

TEST_F(FaultsInHostCalls, KeepPlayFromChangingTheHost) {
  theFaults().add({.procedure = "ActionControl.Play", .error = -7});
  PIActionDescriptor result = nullptr;
  PIActionDescriptor parameters = descriptorOf(
      R"([{"key": "null", "type": "obj ", "value": [{"form": "Clss", "class": "$pencilTool"}]}])");
  EXPECT_EQ(control_->Play(&result, kEventSelect, parameters, plugInDialogSilent), -7);
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(theHost().tool(), "paintbrushTool");
}

}  // namespace
}  // namespace simulator
