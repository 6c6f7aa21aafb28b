// Runs programs of the project as a user does.
#pragma once

#include <string>
#include <vector>

namespace testing_support {

struct Finished {
  int status = -1;  ///< the exit status; -1 where a signal ended it
  std::string output;
  std::string errors;
};

/// Runs a program with these arguments, without a shell and with an empty standard input.
Finished run(const std::vector<std::string>& command);

std::string readFile(const std::string& file);
void writeFile(const std::string& file, const std::string& text);

/// A folder of its own for a test, removed at the end.
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
