// Long runs of device motion: from the framework's callback to the end of the dispatch.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>

#include "device/MrvDeviceEvents.h"
#include "simulator/host/DocumentView.h"
#include "simulator/moravin/Framework.h"
#include "tests/support/AllocatedBytes.h"
#include "tests/support/Build.h"
#include "tests/support/Calls.h"
#include "tests/support/DeviceRecords.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

// Fewer in a build without optimisation, and fewer still under a sanitizer. A sanitizer allocates
// in its own way, so the allocated memory is not checked there.
constexpr int kSamples = kSanitized ? 100'000 : kOptimized ? 10'000'000 : 1'000'000;
constexpr int kWarmUp = kSamples / 10;

/// Random pushes, pulls, pans and twists of every size, with occasional rest.
class RandomMotion {
 public:
  std::array<std::int16_t, 6> next() {
    std::array<std::int16_t, 6> axes = {};
    if (random_() % 64 == 0) return axes;
    const int shift = static_cast<int>(random_() % 16);
    for (std::int16_t& axis : axes) axis = static_cast<std::int16_t>(uniform_(random_) >> shift);
    return axes;
  }

 private:
  std::mt19937 random_{20240229};
  std::uniform_int_distribution<int> uniform_{-32768, 32767};
};

class Soak : public testing::Test {
 protected:
  Soak() {
    startUp();
    runMainLoopUntilIdle();
    theLog().setSink({});
    DocumentView& view = theDocumentView();
    view.redrawDelay = 0.0;
    theWindowServer().setApplication([&view](const SynthesizedEvent& event) {
      ++input;
      view.react(event);
    });
    theEventManager().setApplication([&view](EventRef event) { view.react(event); });
  }
  ~Soak() override { shutDown(); }

  void play(int samples) {
    for (int i = 0; i < samples; ++i) {
      MoravinDeviceState record = axesRecord(MrvDeviceEvents::m_clientID, motion.next());
      MrvDeviceEvents::messageHandlerProc(1, kMoravinMessageDeviceState, &record);
      while (theEventManager().dispatchNext()) ++dispatched;
      theWindowServer().deliverInput();
      if (theDocumentView().redrawDue() && i % 3 == 0) theDocumentView().redraw();
    }
  }

  Machine machine;
  RandomMotion motion;
  long dispatched = 0;
  static inline long input = 0;
};

TEST_F(Soak, HoldsNoMoreMemoryAfterMillionsOfRandomSamples) {
  play(kWarmUp);
  const std::size_t before = allocatedBytes();
  play(kSamples - kWarmUp);
  const std::size_t after = allocatedBytes();
  // Each sample was dispatched, and many caused ticks.
  EXPECT_GE(dispatched, kSamples);
  EXPECT_GT(input, kSamples / 100);
  EXPECT_EQ(theEventManager().live(), 0U);
  EXPECT_EQ(theCFObjects().live(), 0U);
  EXPECT_EQ(theHost().objectsOwned(), 0U);
  if (!kSanitized) {
    EXPECT_EQ(after, before);
  }
}

}  // namespace
