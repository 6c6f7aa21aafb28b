#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "device/MrvDeviceEvents.h"
#include "hostactions/QueuedEvent.h"
#include "plugin/AutoPluginMain.h"
#include "simulator/macos/RunLoops.h"
#include "suites/Suites.h"
#include "tests/support/Calls.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

constexpr char kActionReferenceSuite[] = "df135117-c769-11d0-8079-00c04fd7ec47";

/// The host's basic suite with a comparison that records its arguments. The suite is static,
/// because suites held at the end of the process are released through it.
struct ComparingHost {
  static inline SPBasicSuite suite;
  static inline std::vector<std::pair<std::string, std::string>> asked;
  static inline bool (*equality)(const std::string&, const std::string&) = nullptr;

  explicit ComparingHost(bool (*wanted)(const std::string&, const std::string&)) {
    suite = *theHost().basicSuite();
    asked.clear();
    equality = wanted;
    suite.IsEqual = [](const char* left, const char* right) -> SPBoolean {
      asked.emplace_back(left, right);
      return equality(left, right);
    };
  }

  int call(const char* caller, const char* selector) {
    SPMessageData message = {0, theHost().plugIn(), nullptr, &suite};
    return AutoPluginMain(caller, selector, &message);
  }
};

class AutoPluginMainDispatch : public testing::Test {
 protected:
  ~AutoPluginMainDispatch() override { runMainLoopUntilIdle(); }

  Machine machine;
};

TEST_F(AutoPluginMainDispatch, StartsWithNullGlobals) {
  EXPECT_EQ(gPlugInRef, nullptr);
  EXPECT_EQ(gMrvDeviceEvents, nullptr);
}

TEST_F(AutoPluginMainDispatch, RefreshesBasicSuiteAndPlugInReferenceAtEveryCall) {
  for (int call = 1; call <= 2; ++call) {
    static SPBasicSuite basics[3];
    SPBasicSuite& basic = basics[call] = *theHost().basicSuite();
    int self = 0;
    SPMessageData message = {0, reinterpret_cast<SPPluginRef>(&self), nullptr, &basic};
    EXPECT_EQ(AutoPluginMain("nobody", "nothing", &message), 0);
    EXPECT_EQ(sSPBasic, &basic);
    EXPECT_EQ(gPlugInRef, reinterpret_cast<SPPluginRef>(&self));
  }
}

TEST_F(AutoPluginMainDispatch, WritesOnlyTheDebugStringForAboutBeforeStartup) {
  EXPECT_EQ(callPlugin("SP Interface", "About"), 0);
  ASSERT_EQ(machine.lines().size(), 1U);
  EXPECT_EQ(machine.lines()[0]["what"], "debug");
  EXPECT_EQ(machine.lines()[0]["text"],
            ">NOT IMPLEMENTED void DoAbout(SPPluginRef plugin, int dialogID)");
  EXPECT_EQ(gMrvDeviceEvents, nullptr);
}

TEST_F(AutoPluginMainDispatch, DoesNothingInShowAboutAndExecute) {
  ShowAbout();
  EXPECT_EQ(Execute(nullptr), 0);
  EXPECT_TRUE(machine.lines().empty());
}

TEST_F(AutoPluginMainDispatch, StartsTheDeviceConnectionAtStartup) {
  EXPECT_EQ(startUp(), 0);
  runMainLoopUntilIdle();
  EXPECT_NE(gMrvDeviceEvents, nullptr);
  EXPECT_EQ(machine.lines("thread").size(), 1U);
  EXPECT_EQ(MrvDeviceEvents::m_clientID, 1);
  EXPECT_EQ(shutDown(), 0);
}

TEST_F(AutoPluginMainDispatch, CreatesOneDeviceConnectionForTwoStartups) {
  EXPECT_EQ(startUp(), 0);
  const MrvDeviceEvents* first = gMrvDeviceEvents;
  EXPECT_EQ(startUp(), 0);
  runMainLoopUntilIdle();
  EXPECT_EQ(gMrvDeviceEvents, first);
  EXPECT_EQ(machine.lines("thread").size(), 1U);
  EXPECT_EQ(shutDown(), 0);
}

TEST_F(AutoPluginMainDispatch, EndsTheDeviceConnectionBeforeTheSuitesAtShutdown) {
  startUp();
  runMainLoopUntilIdle();
  machine.drain();
  EXPECT_EQ(shutDown(), 0);
  EXPECT_EQ(gMrvDeviceEvents, nullptr);
  std::vector<std::string> order;
  for (const Json& line : machine.drain()) {
    order.push_back(line["what"].get<std::string>() + " " + line["do"].get<std::string>());
  }
  // The version query at start-up acquired the descriptor, control and reference suites.
  EXPECT_EQ(order,
            (std::vector<std::string>{"handler remove", "framework unregister", "framework cleanup",
                                      "suite release", "suite release", "suite release"}));
  EXPECT_EQ(theHost().suitesHeld(), 0);
}

TEST_F(AutoPluginMainDispatch, ReleasesTheSuitesAtAShutdownWithoutStartup) {
  sPSActionReference.AcquireSuite(true);
  machine.drain();
  EXPECT_EQ(shutDown(), 0);
  const std::vector<Json> lines = machine.drain();
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0]["do"], "release");
  EXPECT_EQ(lines[0]["name"], kActionReferenceSuite);
  EXPECT_EQ(gMrvDeviceEvents, nullptr);
}

TEST_F(AutoPluginMainDispatch, ReleasesNothingAtAShutdownBeforeAnyUse) {
  EXPECT_EQ(shutDown(), 0);
  EXPECT_TRUE(machine.lines().empty());
}

TEST_F(AutoPluginMainDispatch, PlaysTheQueuedRequestForDoItFromPhotoshop) {
  PlayeventDynamicSetMasterDiameter(42.0, 0);
  EXPECT_EQ(callPlugin("PS Photoshop", "Do It"), 0);
  EXPECT_EQ(theHost().brush(), 42.0);
  EXPECT_FALSE(IsPlayEventBusy());
}

TEST_F(AutoPluginMainDispatch, IgnoresDoItFromAnotherCaller) {
  PlayeventDynamicSetMasterDiameter(42.0, 0);
  for (const char* caller : {"SP Interface", "PS photoshop", "", "PS Photoshop "}) {
    EXPECT_EQ(callPlugin(caller, "Do It"), 0) << caller;
  }
  EXPECT_TRUE(machine.lines().empty());
  EXPECT_TRUE(IsPlayEventBusy());
}

TEST_F(AutoPluginMainDispatch, IgnoresUnknownCallersAndSelectors) {
  for (const char* caller : {"", "SP Interfac", "sp interface", "SP Interface "}) {
    EXPECT_EQ(callPlugin(caller, "Startup"), 0) << caller;
  }
  for (const char* selector : {"", "startup", "Reload", "Do It"}) {
    EXPECT_EQ(callPlugin("SP Interface", selector), 0) << selector;
  }
  EXPECT_EQ(callPlugin("PS Photoshop", "Startup"), 0);
  EXPECT_TRUE(machine.lines().empty());
  EXPECT_EQ(gMrvDeviceEvents, nullptr);
}

TEST_F(AutoPluginMainDispatch, ComparesInAFixedOrderOnlyThroughTheHost) {
  ComparingHost host([](const std::string& left, const std::string& right) {
    return left == "caller" && right == "SP Interface";
  });
  EXPECT_EQ(host.call("caller", "selector"), 0);
  EXPECT_EQ(ComparingHost::asked,
            (std::vector<std::pair<std::string, std::string>>{{"caller", "SP Interface"},
                                                              {"selector", "About"},
                                                              {"selector", "Startup"},
                                                              {"selector", "Shutdown"},
                                                              {"caller", "PS Photoshop"}}));
}

TEST_F(AutoPluginMainDispatch, MatchesNothingThatTheHostCallsDifferent) {
  ComparingHost host([](const std::string&, const std::string&) { return false; });
  EXPECT_EQ(host.call("SP Interface", "Startup"), 0);
  EXPECT_EQ(host.call("PS Photoshop", "Do It"), 0);
  EXPECT_TRUE(machine.lines().empty());
}

TEST_F(AutoPluginMainDispatch, MatchesWhateverTheHostCallsEqual) {
  ComparingHost host([](const std::string& left, const std::string& right) {
    return strcasecmp(left.c_str(), right.c_str()) == 0;
  });
  EXPECT_EQ(host.call("sp interface", "ABOUT"), 0);
  EXPECT_EQ(machine.lines("debug").size(), 1U);
}

TEST_F(AutoPluginMainDispatch, RunsEveryBranchThatOneCallMatches) {
  PlayeventDynamicSetMasterDiameter(42.0, 0);
  ComparingHost host([](const std::string&, const std::string&) { return true; });
  theThreads().holdNewTasks(true);
  EXPECT_EQ(host.call("", ""), 0);
  // This one call runs About, Startup, Shutdown and Do It.
  EXPECT_EQ(machine.lines("debug").size(), 1U);
  EXPECT_EQ(machine.lines("thread").size(), 1U);
  EXPECT_EQ(machine.lines("framework").size(), 1U);
  EXPECT_EQ(gMrvDeviceEvents, nullptr);
  EXPECT_EQ(theHost().brush(), 42.0);
  theThreads().holdNewTasks(false);
}

TEST_F(AutoPluginMainDispatch, ReturnsTheParameterErrorIfTheDeviceConnectionThrows) {
  theFaults().add({"Basic.AcquireSuite", -4, 0, 1});
  EXPECT_EQ(startUp(), 0x5061726D);
  EXPECT_EQ(gMrvDeviceEvents, nullptr);
  EXPECT_TRUE(machine.lines("thread").empty());
  // The suite is refused only once.
  EXPECT_EQ(startUp(), 0);
  EXPECT_NE(gMrvDeviceEvents, nullptr);
  runMainLoopUntilIdle();
  EXPECT_EQ(shutDown(), 0);
}

TEST_F(AutoPluginMainDispatch, ReturnsTheParameterErrorIfDoItCannotAcquireASuite) {
  PlayeventDynamicSetMasterDiameter(42.0, 0);
  theFaults().add({"Basic.AcquireSuite", -1234, 0, 1});
  EXPECT_EQ(callPlugin("PS Photoshop", "Do It"), 0x5061726D);
  EXPECT_EQ(callPlugin("PS Photoshop", "Do It"), 0);
  EXPECT_EQ(theHost().brush(), 42.0);
}

TEST_F(AutoPluginMainDispatch, DoesNotReportAHostErrorWhilePlaying) {
  PlayeventDynamicSetMasterDiameter(42.0, 0);
  theFaults().add({"ActionControl.Play", -1715, 0, 1});
  EXPECT_EQ(callPlugin("PS Photoshop", "Do It"), 0);
  EXPECT_EQ(theHost().brush(), 13.0);
}

}  // namespace
