// How far a child process came, for the one that waits for it.
#pragma once

#include <cstddef>
#include <string>

namespace simulator {

/// A record that a process shares with the children that it forks later. If a child ends early, the
/// record says where that was, and which exception ended it.
class Progress {
 public:
  /// Throws `std::runtime_error` if the system has no memory.
  Progress();
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// In the child: counts a step that begins.
  void beginStep();

  /// In the child: from now on an exception that nothing catches, on any thread, is recorded before
  /// it ends the process. One object at a time.
  void recordUncaughtExceptions();

  /// The steps that were begun.
  std::size_t steps() const;

  /// What ended the process, such as `threw std::runtime_error ("no suite")`; empty if no exception
  /// was recorded.
  std::string exception() const;

 private:
  struct Record;
  Record* record_;
};

/// The exception that is being handled or that nothing caught, as `Progress::exception` names it:
/// its type and, if it has one, the text of what(). A number or a text is shown by its value.
std::string currentExceptionText();

}  // namespace simulator
