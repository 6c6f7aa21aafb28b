#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "simulator/host/Host.h"
#include "simulator/macos/MacFaults.h"
#include "simulator/scenario/Procedures.h"

namespace {

using namespace simulator;

TEST(Procedures, AreThoseOfTheHostTheFrameworkAndThePlatform) {
  std::vector<std::string> expected = {"Framework.Install"};
  for (const std::string_view name : hostProcedures()) expected.emplace_back(name);
  for (const std::string_view name : macProcedures()) expected.emplace_back(name);
  const std::vector<std::string> names = procedureNames();
  EXPECT_THAT(names, testing::UnorderedElementsAreArray(expected));
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
  EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
  EXPECT_THAT(names, testing::IsSupersetOf({"ActionControl.Get", "Basic.AcquireSuite",
                                            "Mac.CreateEvent", "Mac.screen"}));
}

TEST(Procedures, AreKnownByTheirWholeNamesAlone) {
  for (const std::string& name : procedureNames()) EXPECT_TRUE(isProcedure(name)) << name;
  for (const char* other : {"", "*", "Mac.*", "Mac.", "Mac.Screen", "ActionControl", "Get",
                            "ActionControl.get", "ActionControl.Get ", "Framework.Installs"}) {
    EXPECT_FALSE(isProcedure(other)) << other;
  }
}

}  // namespace
