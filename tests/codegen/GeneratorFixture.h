// A simulated host with descriptors made from JSON, and a file to dump them to.
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <vector>

#include "codegen/DumpDescriptor.h"
#include "simulator/host/Host.h"
#include "suites/Suites.h"
#include "tests/support/Process.h"

/// Tests of the generator. At the end of each test, all objects of the host must have been released
/// and none misused.
class GeneratorFixture : public testing::Test {
 protected:
  GeneratorFixture();
  ~GeneratorFixture() override;

  /// A descriptor that the host owns, made from the items of a JSON descriptor.
  static PIActionDescriptor descriptor(const std::string& json);

  /// A list and a reference, likewise.
  static PIActionList list(const std::string& json);
  static PIActionReference reference(const std::string& json);

  /// The text that a walker writes, at indentation level 1.
  std::string walked(PIActionDescriptor descriptor);
  std::string walked(PIActionList list);
  std::string walked(PIActionReference reference);

  /// The text that a dump appends to the file.
  std::string dumped(std::uint32_t eventID, PIActionDescriptor descriptor);

  /// The text with each handle replaced by a number, counted from 1 in order of appearance:
  /// "desc0000600000000011" becomes "desc<1>", "desc0x600000000011" becomes "desc0x<1>".
  static std::string numbered(const std::string& text);

  /// The texts of the system log's lines so far.
  const std::vector<std::string>& systemLog() const { return systemLog_; }

  /// The names of the suites that were acquired, in order.
  const std::vector<std::string>& acquiredSuites() const { return acquiredSuites_; }

  std::filesystem::path folder() const { return folder_.file(""); }
  std::string file() const { return folder_.file("dump.txt"); }
  std::string fileText() const { return testing_support::readFile(file()); }

 private:
  testing_support::TemporaryFolder folder_;
  std::vector<std::string> systemLog_;
  std::vector<std::string> acquiredSuites_;
};
