// Keeps what was done in the window: the steps as scenarios that can be played, and the log.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "mrvsim/Output.h"
#include "simulator/base/Json.h"

namespace simulator::live {

/// Each start of the plug-in begins a scenario and a log of their own: FILE, then FILE-2 and so on,
/// with the number before the ending. The files get their content by `commit`. [main-thread]
class Recording {
 public:
  /// An empty name: that output is not wanted. `inputs`: files that must not be overwritten. Throws
  /// BadOutput if the first files cannot be written.
  Recording(std::string scenario, std::string log, std::vector<std::string> inputs);

  /// Ends what was recorded so far and begins the next scenario. Throws BadOutput.
  void begin(const Json& setup);

  void step(const Json& step);
  void line(std::string_view line);

  /// Writes the files. Throws BadOutput.
  void commit();

 private:
  void end();
  void open(const std::string& name, std::unique_ptr<Output>& output);

  std::string scenarioName_, logName_;
  std::vector<std::string> inputs_;
  int starts_ = 0;
  bool hasSteps_ = false;
  std::unique_ptr<Output> scenario_, log_;
  std::vector<std::unique_ptr<Output>> ended_;
};

/// "a/flight.json" and 2: "a/flight-2.json"; 1: the name itself.
std::string numberedName(const std::string& name, int number);

}  // namespace simulator::live
