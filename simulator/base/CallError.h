// How a call into the simulated system ends early.
#pragma once

#include <cstdint>

namespace simulator {

/// Thrown inside a call to end it; the outermost function of the call catches it and returns
/// `error` to the caller.
struct CallError {
  std::int32_t error;
};

}  // namespace simulator
