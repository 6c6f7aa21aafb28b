// What the entry point passes to DoAbout, which this program defines itself.
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "plugin/AutoPluginMain.h"
#include "simulator/host/Host.h"

namespace {
std::vector<std::pair<SPPluginRef, int>> gShown;  // the arguments of each call
}  // namespace

void DoAbout(SPPluginRef plugin, int dialogID) { gShown.emplace_back(plugin, dialogID); }

namespace {

int callPlugin(int& self, const char* caller, const char* selector) {
  SPMessageData message = {0, reinterpret_cast<SPPluginRef>(&self), nullptr,
                           simulator::theHost().basicSuite()};
  return AutoPluginMain(caller, selector, &message);
}

TEST(AboutBox, IsShownForThePlugInOfTheCallWithDialog18502) {
  int first = 0;
  int second = 0;
  EXPECT_EQ(callPlugin(first, "SP Interface", "About"), 0);
  EXPECT_EQ(callPlugin(second, "SP Interface", "About"), 0);
  ASSERT_EQ(gShown.size(), 2U);
  EXPECT_EQ(gShown[0], std::pair(reinterpret_cast<SPPluginRef>(&first), 18502));
  EXPECT_EQ(gShown[1], std::pair(reinterpret_cast<SPPluginRef>(&second), 18502));
}

TEST(AboutBox, IsNotShownForAnotherCallerOrSelector) {
  int self = 0;
  EXPECT_EQ(callPlugin(self, "PS Photoshop", "About"), 0);
  EXPECT_EQ(callPlugin(self, "SP Interface", "Do It"), 0);
  EXPECT_TRUE(gShown.empty());
}

}  // namespace
