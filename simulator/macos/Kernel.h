// Settings of the simulated kernel.
#pragma once

#include <optional>

namespace simulator {

/// What "sysctl.proc_native" holds: 1 for a native process, 0 for a translated one, none for a
/// kernel that does not know the setting. [main-thread]
std::optional<int>& processIsNative();

}  // namespace simulator
