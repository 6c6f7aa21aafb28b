// The manual page of the program.
#pragma once

#include <string>
#include <vector>

#include "mrvsim/CommandLine.h"

namespace simulator {

/// The page in the language of man. `version`: such as "1.0.0".
std::string manualPage(const std::vector<CommandDescription>& commands, const std::string& version);

}  // namespace simulator
