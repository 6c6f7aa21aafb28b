#include <gtest/gtest.h>

#include <algorithm>

#include "hostactions/ActiveTool.h"
#include "simulator/host/Host.h"
#include "simulator/scenario/Names.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;

int numberOf(const std::string& tool) {
  theHost().setTool(tool);
  int number = 0;
  EXPECT_EQ(PlayeventGetActiveTool(&number, nullptr), 0);
  return number;
}

TEST(Names, ListEveryToolThatThePluginNumbersAndNoOther) {
  testing_support::Machine machine;
  constexpr int kNumberedTools = 30;
  for (const std::string& tool : knownTools()) EXPECT_NE(numberOf(tool), kOtherTool) << tool;
  EXPECT_EQ(numberOf("crayonTool"), kOtherTool);
  EXPECT_EQ(knownTools().size(), std::size_t{kNumberedTools});
}

TEST(Names, AreSortedAndUnique) {
  EXPECT_TRUE(std::is_sorted(knownTools().begin(), knownTools().end()));
  EXPECT_EQ(std::adjacent_find(knownTools().begin(), knownTools().end()), knownTools().end());
}

TEST(Names, GiveEachCallerItsSelectors) {
  for (const std::string& caller : knownCallers()) EXPECT_FALSE(knownSelectors(caller).empty());
  EXPECT_TRUE(knownSelectors("Another Host").empty());
}

}  // namespace
