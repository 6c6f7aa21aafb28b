// Counts instructions of the bundle's code: plays scenarios under callgrind.
#pragma once

#include <cstdint>
#include <string>

namespace testing_support {

/// What the bundle's code did in one play.
struct Counts {
  std::int64_t instructions = 0;    ///< its own, without those of functions that it calls
  std::int64_t callsElsewhere = 0;  ///< its calls of functions that are not the simulated Mac's
};

/// Plays the text of a scenario with the bundle. The bundle's code is what lies in no file that the
/// system's loader mapped. Fails the test if the play does not end well. A program that calls this
/// is compiled with MRVSIM and MRV_BUNDLE.
Counts countInPlay(const std::string& scenario);

}  // namespace testing_support
