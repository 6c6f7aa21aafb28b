// The names that scenarios may use. Others are played as well, because a host may send anything and
// have any tool, but they are most likely misspelt.
#pragma once

#include <string>
#include <vector>

namespace simulator {

/// The callers of the entry point, and the selectors that belong to one; empty for another caller.
std::vector<std::string> knownCallers();
std::vector<std::string> knownSelectors(const std::string& caller);

/// The string IDs of the tools that have a number in the plug-in.
const std::vector<std::string>& knownTools();

/// The keyboard layouts whose brush keys are known; all others have those of the first.
const std::vector<std::string>& knownLayouts();

}  // namespace simulator
