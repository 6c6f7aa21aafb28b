// Settings of the simulated kernel.
#pragma once

#include <optional>

namespace simulator {

/// The value of "sysctl.proc_native", which callers may change: 1 for a native process, 0 for a
/// translated one, nullopt for a kernel without the setting. [main-thread]
std::optional<int>& processIsNative();

}  // namespace simulator
