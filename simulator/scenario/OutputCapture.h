// Takes what is written to standard output out of its way and hands it on line by line.
#pragma once

#include <functional>
#include <string>

namespace simulator {

/// While it lives, standard output goes to a file in memory. `original` still writes to where it
/// went before.
class OutputCapture {
 public:
  OutputCapture();
  ~OutputCapture();
  OutputCapture(const OutputCapture&) = delete;
  OutputCapture& operator=(const OutputCapture&) = delete;

  /// The descriptor of the original standard output.
  int original() const { return original_; }

  /// Hands every complete line that was written since the last call to `line`. [any-thread, one at
  /// a time]
  void drain(const std::function<void(const std::string&)>& line);

  /// The same, with what is left without an end of line.
  void finish(const std::function<void(const std::string&)>& line);

 private:
  void readMore();

  int original_;
  int memory_;
  long position_ = 0;
  std::string pending_;
};

}  // namespace simulator
