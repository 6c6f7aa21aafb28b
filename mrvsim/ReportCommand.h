// `mrvsim report`: makes the report from a log that was kept.
#pragma once

#include <string>

namespace simulator {

/// Reads the log, a file or "-" for standard input, and writes the page to `file`, or to standard
/// output for "-". Returns the program's exit status. Throws `std::exception` with one line that
/// names the file, the line and column if it could not be done; the file is then as it was.
int runReport(const std::string& log, const std::string& file);

}  // namespace simulator
