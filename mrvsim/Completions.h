// What completes the program's command line in shells.
#pragma once

#include <string>
#include <vector>

#include "mrvsim/CommandLine.h"

namespace simulator {

/// Each a script for that shell.
std::string bashCompletion(const std::vector<CommandDescription>& commands);
std::string zshCompletion(const std::vector<CommandDescription>& commands);

}  // namespace simulator
