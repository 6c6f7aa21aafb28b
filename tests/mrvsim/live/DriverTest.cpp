#include <SPInterf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <sstream>

#include "mrvsim/live/Driver.h"
#include "mrvsim/live/Loop.h"
#include "simulator/scenario/ScenarioReader.h"
#include "tests/support/Process.h"

namespace {

using namespace simulator::live;
using simulator::Json;
using simulator::jsonOf;
using simulator::Scenario;
using simulator::Step;
using testing_support::readFile;
using testing_support::run;

constexpr std::int64_t kMillisecond = 1'000'000;

class DriverOfAPlugIn : public testing::Test {
 protected:
  /// Loads the plug-in; a demo's steps are taken, too.
  void begin(const std::string& plugin = MODULE, Scenario setup = liveSetup(),
             std::optional<std::vector<Step>> demo = {}, double timeout = 10) {
    session_ = std::make_unique<Session>(PluginFiles{plugin, FRAMEWORK}, timeout);
    recording_ = std::make_unique<Recording>(folder_.file("r.json"), folder_.file("log"),
                                             std::vector<std::string>());
    driver_ = std::make_unique<Driver>(*session_, *recording_, std::move(setup), std::move(demo),
                                       isMeasured_);
    driver_->start(now_);
  }

  /// Lets so many milliseconds pass, in steps as a window takes them.
  void pass(int milliseconds) {
    for (int passed = 0; passed < milliseconds; passed += 5) {
      now_ += 5 * kMillisecond;
      driver_->advance(now_);
      driver_->catchUp();
    }
  }

  void call(const char* selector) {
    driver_->take(simulator::CallStep{kSPInterfaceCaller, selector});
  }

  void end() {
    driver_->finish();
    recording_->commit();
  }

  const Seen& seen() const { return driver_->seen(); }

  std::string logOf(const std::string& scenario, int status) const {
    const auto played = run({MRVSIM, "play", folder_.file(scenario), "--log", folder_.file("l2")});
    EXPECT_EQ(played.status, status) << played.errors;
    return readFile(folder_.file("l2"));
  }

  testing_support::TemporaryFolder folder_;
  bool isMeasured_ = false;
  std::int64_t now_ = 1000 * kMillisecond;
  std::unique_ptr<Session> session_;
  std::unique_ptr<Recording> recording_;
  std::unique_ptr<Driver> driver_;
};

TEST_F(DriverOfAPlugIn, ConnectsItAtTheStart) {
  begin();
  pass(20);
  EXPECT_TRUE(seen().isLoaded);
  EXPECT_TRUE(seen().host.isConnected);
  EXPECT_TRUE(seen().host.hasWindow);
  EXPECT_EQ(seen().host.brush, 13);
}

TEST_F(DriverOfAPlugIn, ZoomsWhileAPushIsHeldAndRestsAfterIt) {
  begin();
  driver_->hand().press(kPush, 1, true);
  pass(400);
  EXPECT_GT(seen().host.zoom, 1.5);
  EXPECT_GT(seen().counts[kZoomIn], 5U);
  driver_->hand().press(kPush, 1, false);
  pass(600);
  EXPECT_EQ(driver_->lastSample(), Sample{});
  const double zoom = seen().host.zoom;
  const std::size_t samples = driver_->samples().size();
  pass(200);
  EXPECT_EQ(seen().host.zoom, zoom);
  EXPECT_EQ(driver_->samples().size(), samples);
}

TEST_F(DriverOfAPlugIn, SendsAHundredSamplesASecondWhileTheCapIsMoved) {
  begin();
  pass(15);
  driver_->hand().press(kTwist, 1, true);
  pass(200);
  const auto& samples = driver_->samples();
  ASSERT_GE(samples.size(), 19U);
  for (std::size_t i = 1; i < samples.size(); ++i) EXPECT_EQ(samples[i].at - samples[i - 1].at, 10);
}

TEST_F(DriverOfAPlugIn, LeavesOutTheMotionDuringAStandstill) {
  begin();
  pass(20);
  driver_->hand().press(kPush, 1, true);
  pass(100);
  const std::size_t before = driver_->samples().size();
  now_ += 60'000 * kMillisecond;
  driver_->advance(now_);
  EXPECT_LE(driver_->samples().size(), before + 1);
}

/// Everything that a person can do in the window.
TEST_F(DriverOfAPlugIn, RecordsWhatPlaysToTheSameLog) {
  begin();
  const auto gesture = [&](Axis axis, int direction) {
    driver_->hand().press(axis, direction, true);
    pass(300);
    driver_->hand().press(axis, direction, false);
    pass(200);
  };
  gesture(kPush, 1);
  driver_->take(simulator::MouseStep{{300, 200}});
  gesture(kTwist, 1);
  driver_->hand().press(kSideways, 1, true);
  pass(100);
  driver_->take(simulator::ClickStep{simulator::Click::kDown});
  driver_->hand().press(kSideways, 1, false);
  pass(300);
  driver_->take(simulator::ClickStep{simulator::Click::kUp});
  driver_->take(simulator::RedrawDelayStep{90});
  gesture(kPush, -1);
  driver_->take(simulator::PreferenceStep{true});
  driver_->take(simulator::ToolStep{"lassoTool"});
  driver_->take(simulator::LayoutStep{"com.apple.keylayout.German"});
  driver_->take(simulator::FailStep{{"ActionControl.Get", -1715, 0, 2}});
  gesture(kTwist, -1);
  driver_->take(simulator::ActiveStep{false});
  gesture(kPush, 1);
  driver_->take(simulator::ActiveStep{true});
  driver_->take(simulator::WindowStep{std::nullopt});
  gesture(kPush, 1);
  driver_->take(
      simulator::WindowStep{simulator::WindowSetup{{{0, 0}, {500, 322}}, {{0, 0}, {500, 300}}}});
  call(kSPInterfaceShutdownSelector);
  call(kSPInterfaceStartupSelector);
  driver_->plugIn(false);
  gesture(kUpward, 1);
  driver_->plugIn(true);
  driver_->hand().press(kUpward, 1, true);
  pass(150);
  end();
  const std::string log = readFile(folder_.file("log"));
  EXPECT_EQ(log, logOf("r.json", 0));
  for (const char* const what : {"posted", "wheel", "key", "click", "view", "result", "get"}) {
    EXPECT_THAT(log, testing::HasSubstr(std::string("\"what\":\"") + what + "\"")) << what;
  }
  EXPECT_THAT(log, testing::HasSubstr("\"passed\":false"));
}

TEST_F(DriverOfAPlugIn, PlaysADemoToItsExpectedLog) {
  const std::string name = std::string(MRV_SCENARIOS) + "/view";
  const simulator::ScenarioFile scenario(name + ".json");
  std::vector<Step> steps;
  scenario.eachStep([&](const Step& step, const auto&) { steps.push_back(step); });
  begin(MODULE, scenario.setup(), steps);
  pass(static_cast<int>(steps.back().at));
  end();
  EXPECT_EQ(readFile(folder_.file("log")), readFile(name + ".expected.jsonl"));
}

TEST_F(DriverOfAPlugIn, StartsAPlugInThatCrashedAnew) {
  setenv("MISBEHAVE", "crash", 1);
  begin(MISBEHAVES, liveSetup(),
        std::vector<Step>{
            {1200, simulator::CallStep{kSPInterfaceCaller, kSPInterfaceStartupSelector}}});
  pass(1210);
  pass(50);
  EXPECT_EQ(seen().breakdowns, 1);
  EXPECT_THAT(seen().lastBreakdown,
              testing::StartsWith("/steps/0 (call): the plug-in crashed: SIGSEGV"));
  EXPECT_EQ(driver_->starts(), 2);
  EXPECT_TRUE(seen().isLoaded);
  end();
  EXPECT_EQ(run({MRVSIM, "play", folder_.file("r.json"), "--plugin", MISBEHAVES}).status, 4);
  EXPECT_EQ(readFile(folder_.file("r-2.json")).find("call"), std::string::npos);
}

TEST_F(DriverOfAPlugIn, GivesUpAPlugInThatBreaksAtOnceEachTime) {
  setenv("MISBEHAVE", "throw", 1);
  begin(MISBEHAVES);
  pass(500);
  EXPECT_EQ(driver_->starts(), 3);
  EXPECT_EQ(seen().breakdowns, 3);
  EXPECT_FALSE(seen().isLoaded);
  EXPECT_EQ(seen().lastBreakdown,
            "/steps/0 (call): the plug-in threw std::runtime_error (\"no such brush\") through its "
            "entry point or a handler");
  driver_->restart();
  pass(20);
  EXPECT_GT(driver_->starts(), 3);
  end();
}

TEST_F(DriverOfAPlugIn, IsNotHeldUpByOneThatDoesNotComeBack) {
  setenv("MISBEHAVE", "spin", 1);
  begin(MISBEHAVES, liveSetup(), {}, 0.1);
  while (seen().breakdowns == 0) driver_->advance(++now_);
  EXPECT_EQ(seen().lastBreakdown, "/steps/0 (call): the plug-in did not come back within 0.1 s");
}

TEST_F(DriverOfAPlugIn, RefusesWhatIsNotAPlugIn) {
  testing_support::writeFile(folder_.file("text.so"), "text");
  begin(folder_.file("text.so"));
  EXPECT_THROW(pass(20), std::runtime_error);
}

TEST_F(DriverOfAPlugIn, LoadsItAnewWithoutTheFramework) {
  begin();
  pass(20);
  driver_->take(simulator::ToolStep{"lassoTool"});
  driver_->setFramework(false);
  pass(40);
  EXPECT_EQ(driver_->starts(), 2);
  EXPECT_TRUE(seen().isLoaded);
  EXPECT_FALSE(seen().host.isConnected);
  EXPECT_EQ(seen().breakdowns, 0);
  end();
  const Scenario second = simulator::parseScenario(readFile(folder_.file("r-2.json")), "r-2");
  EXPECT_FALSE(second.framework);
  EXPECT_EQ(second.host.tool, "lassoTool");
}

TEST_F(DriverOfAPlugIn, SendsNothingWhileTheDeviceIsUnplugged) {
  begin();
  pass(20);
  driver_->plugIn(false);
  driver_->hand().press(kPush, 1, true);
  pass(100);
  EXPECT_TRUE(driver_->samples().empty());
  EXPECT_EQ(seen().host.zoom, 1);
}

TEST_F(DriverOfAPlugIn, LeavesNoProcessBehind) {
  begin();
  pass(20);
  driver_.reset();
  session_.reset();
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(DriverOfAPlugIn, MeasuresTheTimeFromInputToEvent) {
  isMeasured_ = true;
  RealClock clock;
  now_ = clock.now();
  begin();
  driver_->catchUp();
  driver_->hand().follow(Deflection{0, 1, 0, 0, 0, 0});
  driver_->noteInput(clock.now());
  while (seen().latency.count() < 3) driver_->advance(clock.now());
  EXPECT_GT(seen().latency.percentile(0.5), 0.0);
}

}  // namespace
