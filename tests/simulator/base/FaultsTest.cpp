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

using Errors = std::vector<std::int32_t>;

/// What the next `count` calls of the procedure return; 0 for a call that may proceed.
Errors errorsOf(Faults& faults, const char* procedure, int count) {
  Errors errors;
  for (int i = 0; i < count; ++i) errors.push_back(faults.strike(procedure).value_or(0));
  return errors;
}

TEST(Faults, StrikeAsOftenAsTheyAreToldAfterTheCallsThatPass) {
  Faults faults;
  faults.add({.procedure = "A.One", .error = -7, .after = 2, .times = 3});
  EXPECT_EQ(errorsOf(faults, "A.Other", 9), Errors(9, 0));
  EXPECT_EQ(errorsOf(faults, "A.One", 7), (Errors{0, 0, -7, -7, -7, 0, 0}));
  EXPECT_EQ(faults.fired(), 3U);
  EXPECT_EQ(faults.lastFired(), "A.One");
}

TEST(Faults, TakeTurnsInTheOrderInWhichTheyWereAdded) {
  Faults faults;
  faults.add({.procedure = "A.One", .error = 1, .after = 1});
  faults.add({.procedure = "A.One", .error = 2, .times = 2});
  faults.add({.procedure = "A.One", .error = 3, .after = 1});
  EXPECT_EQ(errorsOf(faults, "A.One", 7), (Errors{0, 1, 2, 2, 0, 3, 0}));
}

TEST(Faults, StrikeNothingIfTheyAreToBeAppliedNoTime) {
  Faults faults;
  faults.add({.procedure = "A.One", .error = 1, .times = 0});
  EXPECT_EQ(errorsOf(faults, "A.One", 2), Errors(2, 0));
  EXPECT_TRUE(faults.calls().empty()) << "there is no order";
}

TEST(Faults, OfTheHostAndOfThePlatformHaveWildcardsOfTheirOwn) {
  Faults faults;
  faults.add({.procedure = "*", .error = 1, .times = 2});
  faults.add({.procedure = "Mac.*", .error = 2});
  EXPECT_EQ(errorsOf(faults, "Mac.CreateEvent", 2), (Errors{2, 0}));
  EXPECT_EQ(errorsOf(faults, "ActionControl.Get", 1), (Errors{1}));
  EXPECT_EQ(errorsOf(faults, "Framework.Install", 2), (Errors{1, 0}));
}

TEST(Faults, CountTheCallsOfEachProcedureWhileThereAreOrders) {
  Faults faults;
  faults.add({.procedure = "none"});
  errorsOf(faults, "A.One", 3);
  errorsOf(faults, "A.Two", 1);
  EXPECT_EQ(faults.calls(), (std::map<std::string, std::uint64_t>{{"A.One", 3}, {"A.Two", 1}}));
}

TEST(Faults, ForgetOrdersAndCountsWhenTheyAreCleared) {
  Faults faults;
  faults.add({.procedure = "A.One", .error = 1, .times = 2});
  errorsOf(faults, "A.One", 1);
  faults.clear();
  EXPECT_EQ(errorsOf(faults, "A.One", 1), (Errors{0}));
  EXPECT_EQ(faults.fired(), 0U);
  EXPECT_EQ(faults.lastFired(), "");
  EXPECT_TRUE(faults.calls().empty());
}

}  // namespace
}  // namespace simulator
