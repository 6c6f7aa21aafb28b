#include "mrvsim/report/Fates.h"

#include <cmath>
#include <cstdlib>
#include <utility>
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
  // The low 16 bits, like the plug-in's.
  return kOrigin - static_cast<std::int16_t>(static_cast<std::int32_t>(end));
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
  bool wouldPostWith(int delta) const { return lackWith(delta) <= 0; }
  /// How much the sum would stay below the threshold.
  int lackWith(int delta) const { return threshold_ - std::abs(int{plus(delta)}); }
  void add(int delta) { value_ = plus(delta); }
  void reset(std::int16_t value = 0) { value_ = value; }

 private:
  std::int16_t plus(int delta) const { return static_cast<std::int16_t>(value_ + delta); }
  int threshold_;
  std::int16_t value_ = 0;
};

/// What the rules say about a sample.
struct Verdict {
  Fate fate = Fate::kAtRest;
  int wait = 0;  ///< the counter of the redraw wait after the sample
  MotionKind kind = MotionKind::kRest;
  int delta = 0;  ///< what it adds to the sum of its kind if it is not dropped
  int lack = 0;   ///< of a tick: how much its sum was below the threshold; at most 0 if it was not
};

/// The plug-in's rules, with a guess at the host's redraw delay.
class Retrace {
 public:
  explicit Retrace(std::optional<std::int64_t> redrawDelay) : redrawDelay_(redrawDelay) {}

  Verdict take(const Sample& sample) {
    if (redrawAt_ && *redrawAt_ <= sample.time) {
      redrawAt_.reset();
      wait_.end();
    }
    Verdict verdict = verdictOn(sample);
    verdict.wait = wait_.value();
    if (sample.has(kHostReacted) && redrawDelay_ && !redrawAt_) {
      redrawAt_ = sample.time + *redrawDelay_;
    }
    return verdict;
  }

  /// Ticks that should have come and did not: the delay is too short.
  std::uint64_t missing() const { return missing_; }
  /// Ticks that came too early: the delay is too long.
  std::uint64_t early() const { return early_; }

 private:
  Verdict verdictOn(const Sample& sample) {
    Verdict verdict = {.kind = motionKind(sample.axes)};
    if (verdict.kind == MotionKind::kTwist) {
      verdict.fate = twist(sample);
      return verdict;
    }
    twists_.reset();
    const bool isPush = verdict.kind == MotionKind::kPush;
    Sum& sum = isPush ? pushes_ : slides_;
    verdict.delta = isPush ? sample.axes[1] : panStepOf(sample.axes);
    verdict.lack = sum.lackWith(verdict.delta);
    verdict.fate = sample.has(kTickPosted) ? tick(sum, verdict.lack) : move(sum, verdict.delta);
    if (verdict.kind == MotionKind::kRest) verdict.fate = Fate::kAtRest;
    return verdict;
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

  Fate move(Sum& sum, int delta) {
    const bool isWaiting = wait_.value() != 0;
    const bool mayHaveMissedTheRedraw = unseen_.value() != 0;
    if (mayHaveMissedTheRedraw) unseen_.drop();
    if (isWaiting || redrawAt_) {
      wait_.drop();
      return isWaiting ? Fate::kWaited : Fate::kRedrawPending;
    }
    if (sum.wouldPostWith(delta)) {
      ++missing_;
      if (!mayHaveMissedTheRedraw) return Fate::kNothingCame;
      wait_ = unseen_;
      return Fate::kWaited;
    }
    sum.add(delta);
    return delta == 0 ? Fate::kTooSmall : Fate::kGathered;
  }

  Fate tick(Sum& sum, int lack) {
    if (wait_.value() != 0 || redrawAt_ || lack > 0) ++early_;
    redrawAt_.reset();
    sum.reset();
    wait_.end();
    wait_.begin();
    unseen_ = wait_;
    return Fate::kActed;
  }

  std::optional<std::int64_t> redrawDelay_;
  std::optional<std::int64_t> redrawAt_;  ///< set while the host's window waits to be redrawn
  WaitCounter wait_;
  /// The counter as if no redraw had come since the tick: the plug-in does not see the redraw of a
  /// window in one half of the screen.
  WaitCounter unseen_;
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

/// Writes the verdicts down. Those on a wait stay open until the next tick, which may show that its
/// sum began before.
class Record {
 public:
  void take(const Verdict& verdict) {
    if (verdict.fate == Fate::kActed && verdict.lack > 0) reopen(verdict);
    const bool isOpen = verdict.wait > 0 && verdict.fate != Fate::kActed;
    if (!isOpen) close();
    open_.push_back(verdict);
    if (!isOpen) close();
  }

  Fates finished() {
    close();
    return std::move(fates_);
  }

 private:
  /// The host had redrawn before the samples that the tick's sum needs.
  void reopen(const Verdict& tick) {
    int lack = tick.lack;
    auto first = open_.end();
    while (first != open_.begin() && lack > 0) {
      --first;
      if (first->kind == tick.kind) lack -= std::abs(first->delta);
    }
    if (lack > 0) return;
    for (; first != open_.end(); ++first) {
      first->wait = 0;
      if (first->fate != Fate::kWaited) continue;
      first->fate = first->delta == 0 ? Fate::kTooSmall : Fate::kGathered;
    }
  }

  void close() {
    for (const Verdict& verdict : open_) {
      fates_.fates.append(static_cast<std::int64_t>(verdict.fate));
      fates_.waits.append(verdict.wait);
    }
    open_.clear();
  }

  std::vector<Verdict> open_;  ///< at most the samples of one wait
  Fates fates_;
};

}  // namespace

Fates inferFates(const SampleColumns& samples) {
  std::optional<std::int64_t> redrawDelay;
  if (const auto longest = shortestRedraw(samples)) {
    redrawDelay = likeliestDelay(samples, *longest);
  }
  Retrace retrace(redrawDelay);
  Record record;
  eachSample(samples, [&](const Sample& sample) { record.take(retrace.take(sample)); });
  Fates fates = record.finished();
  fates.redrawDelay = redrawDelay;
  return fates;
}

}  // namespace simulator
