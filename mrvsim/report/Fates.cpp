#include "mrvsim/report/Fates.h"

#include <cmath>
#include <cstdlib>
#include <vector>

namespace simulator {

namespace {

struct Sample {
  std::int64_t time;
  DeviceAxes axes;
  std::int64_t events;
  bool has(SampleEvents event) const { return (events & event) != 0; }
};

template <class Take>
void eachSample(const SampleColumns& samples, Take take) {
  Column::Reader times(samples.time);
  Column::Reader events(samples.events);
  std::vector<Column::Reader> axes(samples.axes.begin(), samples.axes.end());
  for (std::size_t i = 0; i < samples.time.size(); ++i) {
    Sample sample = {times.next(), {}, events.next()};
    for (std::size_t axis = 0; axis < axes.size(); ++axis) {
      sample.axes[axis] = static_cast<std::int16_t>(axes[axis].next());
    }
    take(sample);
  }
}

std::int16_t negated(std::int16_t value) { return static_cast<std::int16_t>(-value); }

/// The pixels of a slide: the square of the deflection over 250, rounded as the plug-in rounds it:
/// toward the positive side, after 5 is added.
int panStep(std::int16_t counts) {
  constexpr double kCountsToPixels = 250;
  constexpr int kOrigin = 5;
  const double deflection = counts;
  const double end = deflection * std::abs(deflection) / kCountsToPixels + kOrigin;
  return kOrigin - static_cast<std::int16_t>(end);
}

int panStepOf(const DeviceAxes& axes) {
  const std::int16_t dx = negated(axes[0]);
  const std::int16_t dy = negated(axes[2]);
  return panStep(std::abs(int{dx}) > std::abs(int{dy}) ? dx : dy);
}

/// A sum of motion that posts something at a threshold, in 16 bits like the plug-in's.
class Sum {
 public:
  explicit Sum(int threshold) : threshold_(threshold) {}
  bool wouldPostWith(int delta) const { return std::abs(int{plus(delta)}) >= threshold_; }
  void add(int delta) { value_ = plus(delta); }
  void reset(std::int16_t value = 0) { value_ = value; }

 private:
  std::int16_t plus(int delta) const { return static_cast<std::int16_t>(value_ + delta); }
  int threshold_;
  std::int16_t value_ = 0;
};

/// The plug-in's rules, with a guess at the host's redraw delay.
class Retrace {
 public:
  explicit Retrace(std::optional<std::int64_t> redrawDelay) : redrawDelay_(redrawDelay) {}

  Fate take(const Sample& sample) {
    if (redrawAt_ && *redrawAt_ <= sample.time) {
      redrawAt_.reset();
      wait_.end();
    }
    const Fate fate = fateOf(sample);
    if (sample.has(kHostReacted) && redrawDelay_ && !redrawAt_) {
      redrawAt_ = sample.time + *redrawDelay_;
    }
    return fate;
  }

  int wait() const { return wait_.value(); }

  /// Ticks that should have come and did not: the delay is too short.
  std::uint64_t missing() const { return missing_; }
  /// Ticks that came too early: the delay is too long.
  std::uint64_t early() const { return early_; }

 private:
  Fate fateOf(const Sample& sample) {
    const MotionKind kind = motionKind(sample.axes);
    if (kind == MotionKind::kTwist) return twist(sample);
    twists_.reset();
    if (kind == MotionKind::kPush) return move(sample, pushes_, sample.axes[1]);
    const Fate fate = move(sample, slides_, panStepOf(sample.axes));
    return kind == MotionKind::kRest ? Fate::kAtRest : fate;
  }

  Fate twist(const Sample& sample) {
    constexpr int kSmallest = 20;
    constexpr std::int16_t kAfterKey = 1;
    const int counts = sample.axes[4];
    if (sample.has(kBrushKeyPosted)) {
      twists_.reset(kAfterKey);
      return Fate::kActed;
    }
    if (std::abs(counts) < kSmallest) return Fate::kTooSmall;
    if (sample.has(kHostRefused)) return Fate::kRefused;
    if (twists_.wouldPostWith(counts)) return Fate::kNothingCame;
    twists_.add(counts);
    return Fate::kGathered;
  }

  Fate move(const Sample& sample, Sum& sum, int delta) {
    if (sample.has(kTickPosted)) return tick(sum, delta);
    const bool isWaiting = wait_.value() != 0;
    if (isWaiting || redrawAt_) {
      wait_.drop();
      return isWaiting ? Fate::kWaited : Fate::kRedrawPending;
    }
    if (sum.wouldPostWith(delta)) {
      ++missing_;
      return Fate::kNothingCame;
    }
    sum.add(delta);
    return delta == 0 ? Fate::kTooSmall : Fate::kGathered;
  }

  Fate tick(Sum& sum, int delta) {
    if (wait_.value() != 0 || redrawAt_ || !sum.wouldPostWith(delta)) ++early_;
    redrawAt_.reset();
    sum.reset();
    wait_.end();
    wait_.begin();
    return Fate::kActed;
  }

  std::optional<std::int64_t> redrawDelay_;
  std::optional<std::int64_t> redrawAt_;  ///< set while the host's window waits to be redrawn
  WaitCounter wait_;
  Sum pushes_{11};
  Sum slides_{6};
  Sum twists_{501};
  std::uint64_t missing_ = 0;
  std::uint64_t early_ = 0;
};

/// The shortest time from a tick on which the host reacted to the next tick. The host had redrawn
/// in between, so its delay is not longer.
std::optional<std::int64_t> shortestRedraw(const SampleColumns& samples) {
  std::optional<std::int64_t> shortest;
  std::optional<std::int64_t> reactedAt;
  eachSample(samples, [&](const Sample& sample) {
    if (!sample.has(kTickPosted)) return;
    if (reactedAt && (!shortest || sample.time - *reactedAt < *shortest)) {
      shortest = sample.time - *reactedAt;
    }
    reactedAt = sample.has(kHostReacted) ? std::optional(sample.time) : std::nullopt;
  });
  return shortest;
}

/// The delay, at most `longest`, with which the fewest ticks stay unexplained. A longer delay
/// explains samples that should have ticked, a shorter one ticks whose sum was not yet enough.
std::int64_t likeliestDelay(const SampleColumns& samples, std::int64_t longest) {
  std::int64_t least = 0;
  std::int64_t most = longest;
  std::int64_t best = longest;
  std::optional<std::uint64_t> fewest;
  for (std::int64_t delay = longest; least <= most; delay = least + (most - least) / 2) {
    Retrace retrace(delay);
    eachSample(samples, [&](const Sample& sample) { retrace.take(sample); });
    const std::uint64_t unexplained = retrace.missing() + retrace.early();
    if (!fewest || unexplained < *fewest) {
      fewest = unexplained;
      best = delay;
    }
    if (unexplained == 0) break;
    if (retrace.missing() > retrace.early()) {
      least = delay + 1;
    } else {
      most = delay - 1;
    }
  }
  return best;
}

}  // namespace

Fates inferFates(const SampleColumns& samples) {
  Fates result;
  if (const auto longest = shortestRedraw(samples)) {
    result.redrawDelay = likeliestDelay(samples, *longest);
  }
  Retrace retrace(result.redrawDelay);
  eachSample(samples, [&](const Sample& sample) {
    result.fates.append(static_cast<std::int64_t>(retrace.take(sample)));
    result.waits.append(retrace.wait());
  });
  return result;
}

}  // namespace simulator
