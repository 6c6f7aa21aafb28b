// `mrvsim validate`: reads files as `play` and `dump` would, and does nothing with them.
#pragma once

#include <string>
#include <vector>

namespace simulator {

/// Prints the name of each file with "ok" on standard output, or what is wrong with it on standard
/// error. An action file is known by its name or its first byte; of other documents, an object is
/// read as a scenario, any other value as a descriptor. Returns the program's exit status: 0 if
/// every file is good, 1 if one has a fault, 2 if one could not be read.
int runValidate(const std::vector<std::string>& files);

}  // namespace simulator
