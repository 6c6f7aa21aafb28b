// How a call into the simulated system ends early.
#pragma once

#include <cstdint>

namespace simulator {

/// Thrown inside of a call to end it with `error`; whoever carries the call out returns that code
/// to the caller.
struct CallError {
  std::int32_t error;
};

}  // namespace simulator
