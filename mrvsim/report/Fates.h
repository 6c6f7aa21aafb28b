// What became of each sample: inferred, because the log shows what the plug-in posts but not what
// it drops, and not when the host redraws.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "mrvsim/report/Column.h"
#include "simulator/scenario/Pacing.h"

namespace simulator {

/// The numbers stand in the page; report/words.js has their words.
enum class Fate {
  kAtRest = 0,         ///< no motion, or the host in the background: six zeros are posted for both
  kActed = 1,          ///< a tick or a key followed
  kGathered = 2,       ///< added to a sum that stayed below its threshold
  kTooSmall = 3,       ///< a twist of less than 20 counts, or a slide that rounds to no step
  kWaited = 4,         ///< dropped from a tick until the host's redraw
  kRedrawPending = 5,  ///< dropped because the host's window waited to be redrawn
  kNothingCame = 6,    ///< enough for a tick or a key, and none came
  kRefused = 7,        ///< the host refused to say the tool or its brush
};

/// What the log shows after a sample and before the next one; a sum of these bits.
enum SampleEvents : std::int64_t {
  kTickPosted = 1,
  kBrushKeyPosted = 2,
  kHostRefused = 4,
  kHostReacted = 8,
};

/// The samples of a play. All columns are of the same length.
struct SampleColumns {
  Column time{Column::Form::kSlopes};
  std::array<Column, 6> axes;
  Column events;  ///< SampleEvents
};

struct Fates {
  Column fates;  ///< Fate
  Column waits;  ///< the counter of the redraw wait after the sample
  /// The host's delay from its reaction to the redraw, in milliseconds, with which the plug-in's
  /// rules explain the ticks best; nullopt if the log shows no redraw.
  std::optional<std::int64_t> redrawDelay;
};

/// Follows the plug-in's rules from sample to sample: which motion dominates, the wait for the
/// redraw, the sums and their thresholds. What the log shows always wins over the rules.
Fates inferFates(const SampleColumns& samples);

}  // namespace simulator
