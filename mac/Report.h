// The report that mrvmac writes, to be attached to a report about the plug-in.
#pragma once

#include <string>

#include "mac/Beliefs.h"

namespace mrvmac {

/// The report's text: the system, each belief with "yes", "no" or "not tested", the first
/// difference to the simulated Mac, and everything that arrived. [any-thread]
std::string writeReport(const Observations& seen);

/// The exit status for these observations: 0 if every belief that could be tested holds, otherwise
/// 1. [any-thread]
int exitStatus(const Observations& seen);

}  // namespace mrvmac
