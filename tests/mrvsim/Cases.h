// Runs of mrvsim that are described as data, each in a folder of its own.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "simulator/base/Json.h"
#include "tests/support/Process.h"

namespace testing_support {

/// The folders and files of one run. In the texts of a case, {dir} stands for its folder,
/// {tmp} for that of temporary files, {scenarios} for that of the project's scenarios, {plugin} for
/// the shipped module, {misbehaves} for the one that misbehaves, and {failingcalls} for the library
/// that makes calls of the C library fail.
class CaseFolder {
 public:
  CaseFolder();

  std::string expanded(std::string text) const;
  /// The other way round: paths become their short forms.
  std::string shortened(std::string text) const;

  std::string file(const std::string& name) const { return folder_.file("dir/" + name); }
  std::string temporary() const { return folder_.file("tmp"); }

  /// The names of the files and folders in the case's folder, and in that for temporary files.
  std::vector<std::string> files() const;
  std::vector<std::string> leftovers() const;

 private:
  std::vector<std::pair<std::string, std::string>> names() const;

  TemporaryFolder folder_;
};

/// Starts mrvsim as a case says and returns its process. `standardOutput` and `standardError` are
/// files. Fields: `files`, `arguments`, `environment` (null removes a variable), `input` (text for
/// standard input), `closed` (descriptors), `stdout` (a file), `fileSizeLimit` (bytes),
/// `dataLimit` (bytes of memory for the data of each process).
pid_t start(const simulator::Json& description, const CaseFolder& folder);

/// Waits for mrvsim and returns what it did. `status` is negative for a signal.
Finished finish(pid_t process, const simulator::Json& description, const CaseFolder& folder);

/// Whether a process that the runs started is left. REQUIRES: `adoptOrphans` was called before.
bool isAnyProcessLeft();
void adoptOrphans();

}  // namespace testing_support
