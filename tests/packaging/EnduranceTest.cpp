// Very long runs of device motion through the bundle.
#include <PIActionsPlugIn.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <random>
#include <string>

#include "simulator/base/Log.h"
#include "simulator/host/DocumentView.h"
#include "simulator/host/Host.h"
#include "simulator/loader/PluginModule.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/EventManager.h"
#include "simulator/macos/Folders.h"
#include "simulator/macos/WindowServer.h"
#include "simulator/moravin/Framework.h"
#include "simulator/scenario/HostFiles.h"
#include "simulator/scenario/Player.h"
#include "tests/packaging/Callgrind.h"
#include "tests/support/AllocatedBytes.h"
#include "tests/support/DeviceRecords.h"

namespace {

using namespace simulator;
using testing_support::allocatedBytes;
using testing_support::axesRecord;
using testing_support::countInPlay;
using testing_support::Counts;

constexpr int kSamples = 100'000'000;
constexpr int kWarmUp = kSamples / 100;

/// The bundle in the simulated Mac, with a host that redraws at once and writes no log.
class RunningBundle {
 public:
  RunningBundle() {
    writeHostFiles({}, preferencesFolder(home_.path()));
    setHomeFolder(home_.path());
    theLog().setSink({});
    DocumentView& view = theDocumentView();
    view.redrawDelay = 0.0;
    theWindowServer().setApplication([this, &view](const SynthesizedEvent& event) {
      ++input_;
      view.react(event);
    });
    theEventManager().setApplication([&view](EventRef event) { view.react(event); });
    loadFramework(MRV_DEVICE_FRAMEWORK);
    plugin_ = loadPlugin(MRV_BUNDLE);
    call("Startup");
  }

  ~RunningBundle() { call("Shutdown"); }
  RunningBundle(const RunningBundle&) = delete;
  RunningBundle& operator=(const RunningBundle&) = delete;

  /// Pushes, pulls, pans and twists of every size, with occasional rest, a few at a time.
  void play(int samples) {
    const std::uint16_t client = theFramework().client();
    while (samples > 0) {
      for (int queued = 0; queued < kAtATime && samples > 0; ++queued, --samples) {
        theFramework().send(kMoravinMessageDeviceState, axesRecord(client, nextAxes()));
      }
      runMainLoopUntilIdle();
      if (theDocumentView().redrawDue()) theDocumentView().redraw();
    }
  }

  long input() const { return input_; }

 private:
  static constexpr int kAtATime = 32;

  void call(const char* selector) {
    PSActionsPlugInMessage message = {};
    auto* data = reinterpret_cast<SPMessageData*>(&message);
    data->self = theHost().plugIn();
    data->basic = theHost().basicSuite();
    EXPECT_EQ(plugin_->entry()("SP Interface", selector, &message), 0);
    runMainLoopUntilIdle();
  }

  std::array<std::int16_t, 6> nextAxes() {
    std::array<std::int16_t, 6> axes = {};
    if (random_() % 64 == 0) return axes;
    const int shift = static_cast<int>(random_() % 16);
    for (std::int16_t& axis : axes) {
      axis = static_cast<std::int16_t>(static_cast<std::int16_t>(random_()) >> shift);
    }
    return axes;
  }

  TemporaryHome home_;
  std::unique_ptr<PluginModule> plugin_;
  std::mt19937 random_{20240229};
  long input_ = 0;
};

TEST(Endurance, HoldsNoMoreMemoryAfterAHundredMillionSamples) {
  RunningBundle bundle;
  bundle.play(kWarmUp);
  const std::size_t before = allocatedBytes();
  bundle.play(kSamples - kWarmUp);
  // A byte lost in every thousand samples would be more. Queues keep some of their memory.
  EXPECT_LT(allocatedBytes(), before + kSamples / 1000);
  EXPECT_GT(bundle.input(), kSamples / 100);
  EXPECT_EQ(theLog().misuses(), 0);
  EXPECT_EQ(theEventManager().live(), 0U);
  EXPECT_EQ(theCFObjects().live(), 0U);
  EXPECT_EQ(theHost().objectsOwned(), 0U);
}

/// The bundle's instructions for so many rounds of a tick and the wait that only dropped samples
/// end.
std::int64_t instructionsOfRounds(int rounds) {
  constexpr int kSamplesOfARound = 52;
  std::string text = R"({"steps": [{"call": ["SP Interface", "Startup"]})";
  for (int i = 0; i < rounds * kSamplesOfARound; ++i) {
    text += R"(, {"axes": [0, 100, 0, 0, 0, 0]})";
  }
  return countInPlay(text + "]}").instructions;
}

TEST(Endurance, TakesAsManyInstructionsForASampleLateAsEarly) {
  const std::int64_t early = instructionsOfRounds(20) - instructionsOfRounds(10);
  const std::int64_t late = instructionsOfRounds(210) - instructionsOfRounds(200);
  EXPECT_GT(early, 0);
  EXPECT_NEAR(static_cast<double>(late), static_cast<double>(early),
              static_cast<double>(early) / 100);
}

}  // namespace
