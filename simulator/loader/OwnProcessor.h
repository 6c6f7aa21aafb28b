// The processor that this process runs on.
#pragma once

#include "simulator/loader/MachFormat.h"

namespace simulator {

/// The processor that this library was built for, so the one whose code a plug-in must have. A
/// LoadError if the platform has none of that kind. [any-thread]
mach::Processor ownProcessor();

}  // namespace simulator
