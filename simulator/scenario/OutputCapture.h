// Captures standard output and passes it on line by line.
#pragma once

#include <functional>
#include <string>

namespace simulator {

/// Redirects standard output to a file in memory for its own lifetime. Throws `std::system_error`
/// if the system refuses.
class OutputCapture {
 public:
  OutputCapture();
  ~OutputCapture();
  OutputCapture(const OutputCapture&) = delete;
  OutputCapture& operator=(const OutputCapture&) = delete;

  /// Calls `line` with every complete line written since the last call, without its end.
  /// [any-thread, one at a time]
  void drain(const std::function<void(const std::string&)>& line);

  /// The same, and then passes on an incomplete last line. Throws `std::system_error` if something
  /// that was printed could not be kept.
  void finish(const std::function<void(const std::string&)>& line);

 private:
  void readMore();

  int original_;
  int memory_;
  long position_ = 0;
  int error_ = 0;  ///< why something could not be kept; 0: everything was
  std::string pending_;
};

}  // namespace simulator
