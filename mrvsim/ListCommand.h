// `mrvsim list`: prints the names that scenarios may use.
#pragma once

#include <string>
#include <vector>

namespace simulator {

/// What can be listed, sorted.
std::vector<std::string> listables();

/// Prints the names, one a line, and returns the program's exit status. Throws `std::exception` if
/// there is no such list or standard output cannot be written.
int runList(const std::string& what);

}  // namespace simulator
