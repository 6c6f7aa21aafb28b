#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "mrvsim/report/Fates.h"

namespace simulator {
namespace {

using testing::ElementsAre;

constexpr std::int64_t kTick = kTickPosted | kHostReacted;
constexpr std::int64_t kSilentTick = kTickPosted;

constexpr DeviceAxes push(std::int16_t counts) { return {0, counts, 0, 0, 0, 0}; }
constexpr DeviceAxes slide(std::int16_t counts) { return {counts, 0, 0, 0, 0, 0}; }
constexpr DeviceAxes twist(std::int16_t counts) { return {0, 0, 0, 0, counts, 0}; }

/// Samples of every ten milliseconds.
class FateList : public testing::Test {
 protected:
  void add(const DeviceAxes& axes, std::int64_t events = 0) {
    samples_.time.append(static_cast<std::int64_t>(10 * samples_.time.size()));
    for (std::size_t i = 0; i < axes.size(); ++i) samples_.axes[i].append(axes[i]);
    samples_.events.append(events);
  }

  std::vector<Fate> fates() const {
    const Fates inferred = inferFates(samples_);
    Column::Reader reader(inferred.fates);
    std::vector<Fate> fates;
    while (fates.size() < inferred.fates.size()) fates.push_back(Fate(reader.next()));
    return fates;
  }

  std::vector<std::int64_t> waits() const {
    const Fates inferred = inferFates(samples_);
    Column::Reader reader(inferred.waits);
    std::vector<std::int64_t> waits;
    while (waits.size() < inferred.waits.size()) waits.push_back(reader.next());
    return waits;
  }

  SampleColumns samples_;
};

TEST_F(FateList, GathersUntilTheThresholdOfEachMotion) {
  add(push(10));
  add(push(1), kSilentTick);
  EXPECT_THAT(fates(), ElementsAre(Fate::kGathered, Fate::kActed));
}

TEST_F(FateList, CallsSlidesThatRoundToNoStepTooSmall) {
  // A slide to the left of any size is a step, because a step is rounded toward the other side.
  add(slide(-15));
  add(slide(15));
  add(slide(-16));
  EXPECT_THAT(fates(), ElementsAre(Fate::kTooSmall, Fate::kGathered, Fate::kGathered));
}

TEST_F(FateList, TakesTheLargestMotionThatThereIs) {
  add(slide(-32768), kTick);
  add(slide(32767), kTick);
  add(push(-32768), kTick);
  add(twist(-32768), kBrushKeyPosted);
  EXPECT_THAT(fates(), testing::Each(Fate::kActed));
}

TEST_F(FateList, CallsTwistsBelowTwentyTooSmallAndFollowsTheBrushSum) {
  add(twist(19));
  add(twist(-20));
  add(twist(300));
  add(twist(300), kBrushKeyPosted);
  add(twist(499));
  add(twist(1));
  EXPECT_THAT(fates(), ElementsAre(Fate::kTooSmall, Fate::kGathered, Fate::kGathered, Fate::kActed,
                                   Fate::kGathered, Fate::kTooSmall));
}

TEST_F(FateList, EndsTheBrushSumWithAnyOtherMotion) {
  add(twist(400));
  add(push(1));
  add(twist(400));
  EXPECT_THAT(fates(), ElementsAre(Fate::kGathered, Fate::kGathered, Fate::kGathered));
}

TEST_F(FateList, SaysThatTheHostRefusedATwist) {
  add(twist(30), kHostRefused);
  EXPECT_THAT(fates(), ElementsAre(Fate::kRefused));
}

TEST_F(FateList, DropsWhatComesBeforeTheRedraw) {
  add(push(50), kTick);
  add(push(50));
  add(slide(50));
  add(push(50), kTick);
  EXPECT_THAT(fates(), ElementsAre(Fate::kActed, Fate::kWaited, Fate::kWaited, Fate::kActed));
  EXPECT_THAT(waits(), ElementsAre(1, 2, 3, 1));
  EXPECT_EQ(inferFates(samples_).redrawDelay, 30);
}

TEST_F(FateList, FindsTheDelayThatExplainsEveryTick) {
  // The second tick needs both samples before it, so the host had redrawn after 10 ms. That the
  // next tick comes after 30 ms proves nothing.
  add(push(50), kTick);
  add(push(5));
  add(push(5));
  add(push(5), kTick);
  EXPECT_THAT(fates(), ElementsAre(Fate::kActed, Fate::kGathered, Fate::kGathered, Fate::kActed));
  EXPECT_LE(*inferFates(samples_).redrawDelay, 10);
}

TEST_F(FateList, NamesARedrawThatABrushKeyCaused) {
  add(push(50), kTick);
  add(push(0));
  add(push(50), kTick);
  add(push(0));
  add(push(0));
  add(twist(600), kBrushKeyPosted | kHostReacted);
  add(push(50));
  EXPECT_EQ(fates().back(), Fate::kRedrawPending);
}

TEST_F(FateList, LetsTheFiftyFirstDropEndAWaitWithoutARedraw) {
  add(push(50), kSilentTick);
  for (int i = 0; i < 51; ++i) add(push(50));
  add(push(50), kSilentTick);
  const auto all = fates();
  EXPECT_EQ(all[51], Fate::kWaited);
  EXPECT_EQ(all[52], Fate::kActed);
  EXPECT_EQ(waits()[50], 51);
  EXPECT_EQ(waits()[51], 0);
}

TEST_F(FateList, KnowsFromATickThatItsSumBeganAfterTheRedraw) {
  add(push(50), kSilentTick);
  add(push(50));
  add(slide(50));
  add(push(10));
  add(slide(2));
  add(push(1), kSilentTick);
  EXPECT_THAT(fates(), ElementsAre(Fate::kActed, Fate::kWaited, Fate::kWaited, Fate::kGathered,
                                   Fate::kGathered, Fate::kActed));
  EXPECT_THAT(waits(), ElementsAre(1, 2, 3, 0, 0, 1));
}

TEST_F(FateList, GoesOnWaitingIfThePlugInDidNotSeeTheRedraw) {
  add(push(50), kTick);
  add(push(50), kTick);
  for (int i = 0; i < 51; ++i) add(push(50));
  add(push(50), kTick);
  for (int i = 0; i < 51; ++i) add(push(50));
  add(push(50));
  const auto all = fates();
  EXPECT_THAT(std::vector(all.begin() + 2, all.begin() + 53), testing::Each(Fate::kWaited));
  EXPECT_EQ(all[53], Fate::kActed);
  EXPECT_EQ(all[104], Fate::kWaited);
  EXPECT_EQ(all[105], Fate::kNothingCame);
}

TEST_F(FateList, SaysThatNothingCameOfMotionThatWasEnough) {
  add(push(11));
  add(slide(-100));
  add(twist(501));
  EXPECT_THAT(fates(), ElementsAre(Fate::kNothingCame, Fate::kNothingCame, Fate::kNothingCame));
}

TEST_F(FateList, CountsTheWaitAlsoAtRest) {
  add(push(50), kTick);
  add({});
  add({});
  EXPECT_THAT(fates(), ElementsAre(Fate::kActed, Fate::kAtRest, Fate::kAtRest));
  EXPECT_THAT(waits(), ElementsAre(1, 2, 3));
}

TEST_F(FateList, IsEmptyWithoutSamples) {
  EXPECT_TRUE(fates().empty());
  EXPECT_FALSE(inferFates(samples_).redrawDelay.has_value());
}

}  // namespace
}  // namespace simulator
