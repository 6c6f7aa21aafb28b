#include <MoravinClient/MoravinClient.h>
#include <gtest/gtest.h>

#include "mrvsim/live/Gauges.h"
#include "mrvsim/live/Hand.h"
#include "simulator/host/Host.h"
#include "simulator/macos/WindowServer.h"
#include "simulator/moravin/Framework.h"

namespace {

using namespace simulator;
using live::Gauges;
using live::Motion;
using live::Sample;
using live::strongestMotion;

void ignore(std::uint32_t, std::uint32_t, void*) {}

class GaugesOfAPlugIn : public testing::Test {
 protected:
  GaugesOfAPlugIn() {
    theFramework().install(ignore);
    theLog().setSink([this](const LogLine& line) { gauges_.line(line); });
  }
  ~GaugesOfAPlugIn() override { theLog().setSink({}); }

  void send(const Sample& axes, bool active = true, bool pending = false) {
    gauges_.message({.type = kMoravinMessageDeviceState, .client = {}, .axes = axes}, active,
                    pending);
  }

  static void wheel(int amount, int second = 0) {
    Json wheels = {amount};
    if (second != 0) wheels.push_back(second);
    theLog().writeObject("wheel", {{"wheels", wheels}, {"flags", 0}});
  }

  Gauges gauges_;
};

TEST(StrongestMotion, IsThePanIfTwoAreEqual) {
  EXPECT_EQ(strongestMotion({}), Motion::kRest);
  EXPECT_EQ(strongestMotion({0, 0, 0, 90, 0, 90}), Motion::kRest);
  EXPECT_EQ(strongestMotion({3, 5, 4, 0, 0, 0}), Motion::kZoom);
  EXPECT_EQ(strongestMotion({5, 5, 0, 0, 0, 0}), Motion::kPan);
  EXPECT_EQ(strongestMotion({0, 0, 4, 0, -5, 0}), Motion::kBrush);
  EXPECT_EQ(strongestMotion({0, -32768, 0, 0, 0, 0}), Motion::kZoom);
}

TEST_F(GaugesOfAPlugIn, FillWithAPushUntilATick) {
  send({0, 4, 0, 0, 0, 0});
  send({0, 4, 0, 0, 0, 0});
  EXPECT_EQ(gauges_.zoom(), 8);
  wheel(1);
  EXPECT_EQ(gauges_.zoom(), 0);
  EXPECT_EQ(gauges_.wait(), 1);
}

TEST_F(GaugesOfAPlugIn, FillWithASlideByItsSquare) {
  send({-25, 0, 0, 0, 0, 0});
  EXPECT_EQ(gauges_.pan(), -2);
  send({15, 0, 0, 0, 0, 0});
  EXPECT_EQ(gauges_.pan(), -1);
  wheel(0, 8);
  EXPECT_EQ(gauges_.pan(), 0);
}

TEST_F(GaugesOfAPlugIn, CountDroppedSamplesUntilTheRedraw) {
  wheel(1);
  send({0, 4, 0, 0, 0, 0});
  EXPECT_EQ(gauges_.zoom(), 0);
  EXPECT_EQ(gauges_.wait(), 2);
  gauges_.redrawn();
  send({0, 4, 0, 0, 0, 0}, true, true);
  EXPECT_EQ(gauges_.wait(), 1);
  EXPECT_EQ(gauges_.zoom(), 0);
}

TEST_F(GaugesOfAPlugIn, EndTheLongestWaitByThemselves) {
  wheel(1);
  for (int sample = 0; sample < Gauges::kLongestWait; ++sample) send({0, 1, 0, 0, 0, 0});
  EXPECT_EQ(gauges_.wait(), 0);
  EXPECT_EQ(gauges_.zoom(), 0);
}

TEST_F(GaugesOfAPlugIn, FillWithATwistUntilAKeyOrAnotherMotion) {
  theHost().setBrush(13);
  send({0, 0, 0, 0, 19, 0});
  EXPECT_EQ(gauges_.brush(), 0);
  send({0, 0, 0, 0, 300, 0});
  EXPECT_EQ(gauges_.brush(), 300);
  theLog().write("posted", {{"class", "keyb"}, {"kind", 1}, {"priority", 2}});
  EXPECT_EQ(gauges_.brush(), 1);
  send({0, 4, 0, 0, 0, 0});
  EXPECT_EQ(gauges_.brush(), 0);
}

TEST_F(GaugesOfAPlugIn, DoNotFillInTheBackgroundOrWithoutAWindow) {
  send({0, 4, 0, 0, 0, 0}, false);
  theWindowServer().window().isMain = false;
  send({0, 4, 0, 0, 0, 0});
  send({0, 0, 0, 0, 300, 0});
  EXPECT_EQ(gauges_.zoom(), 0);
  EXPECT_EQ(gauges_.brush(), 0);
}

TEST_F(GaugesOfAPlugIn, DoNotFillIfTheFrameworkHasNoHandler) {
  theFramework().cleanup();
  send({0, 4, 0, 0, 0, 0});
  EXPECT_EQ(gauges_.zoom(), 0);
}

}  // namespace
