// Runs programs of the project as separate processes.
#pragma once

#include <string>
#include <vector>

namespace testing_support {

struct Finished {
  int status = -1;  ///< the exit status; -1 if a signal ended the process
  std::string output;
  std::string errors;
};

/// Runs `command`, a program and its arguments, without a shell and with empty standard input.
/// Throws std::system_error if it cannot be started.
Finished run(const std::vector<std::string>& command);

std::string readFile(const std::string& file);
void writeFile(const std::string& file, const std::string& text);

/// A new temporary folder; the destructor removes it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string file(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

}  // namespace testing_support
